// What the program in the host guide asks its reader for.

#include "records/record.h"
#include "services/userconfig.h"

std::vector<boost::shared_ptr<kdservice::IData>> someOfMyRecords();

std::vector<boost::shared_ptr<kdservice::IData>> someOfMyRecords()
{
    refhost::setUserConfig(std::make_unique<refhost::UserConfig>()); // somebody has logged in
    return {refhost::makeOrder(refhost::MetaMarketOrder, "1"), refhost::makeOrder(refhost::MetaMarketOrder, "2")};
}
