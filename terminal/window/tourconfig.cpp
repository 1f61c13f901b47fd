#include "window/tourconfig.h"

#include "services/userconfig.h"

namespace terminal {

TourConfig::TourConfig()
{
    auto own = std::make_unique<refhost::UserConfig>();
    if (const KV::CUserConfig *present = KV::getUserConfig())
        own->setSegmentedFormat(present->isSegmentedFormat());
    users = refhost::exchangeUserConfig(std::move(own));
}

TourConfig::~TourConfig()
{
    refhost::setUserConfig(std::move(users));
}

} // namespace terminal
