#pragma once

#include <string>

#include "pagerecords.h"

namespace pagetest {

/// A model over the test columns in which every status passes.
struct RulesModel : KV::CHpfPageDataModel
{
    explicit RulesModel(bool append = true, int type = metaId) : CHpfPageDataModel(type, kdservice::TraderStock, append)
    {
        setColumns(*this);
        setExFilterStatus(0);
    }

    std::string put(const std::string &key, const Values &values = {})
    {
        const Result result = addData(makeOrder(key, values));
        return "+" + result->enterKey + " -" + result->leaveKey;
    }

    std::string shown() const { return keysOf(getShowDatas()); }
    std::string everything() const { return keysOf(getAllDatas()); }
};

inline Values priced(double price, int sequence = 0)
{
    Values values;
    values.price = price;
    values.sequence = sequence;
    return values;
}

inline Values withStatus(int status, const std::string &code = "600000.SH")
{
    Values values;
    values.status = status;
    values.code = code;
    return values;
}

} // namespace pagetest
