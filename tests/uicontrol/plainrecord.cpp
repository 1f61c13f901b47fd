#include "plainrecord.h"

#include <limits>

namespace pagetest {

PlainRecord::PlainRecord(std::string key, quint64 hash, std::function<void()> onDestroyed)
    : keyText(std::move(key)), hashOfText(hash), destroyed(std::move(onDestroyed))
{
}

PlainRecord::~PlainRecord()
{
    if (destroyed)
        destroyed();
}

int PlainRecord::getInt(int) const
{
    return std::numeric_limits<int>::max();
}

qint64 PlainRecord::getLong(int) const
{
    return std::numeric_limits<qint64>::max();
}

double PlainRecord::getDouble(int) const
{
    return std::numeric_limits<double>::max();
}

const kdservice::IData::FieldMap &PlainRecord::getFieldDes() const
{
    static const FieldMap none;
    return none;
}

} // namespace pagetest
