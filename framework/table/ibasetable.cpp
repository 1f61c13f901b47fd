#include "zb/ibasetable.h"

namespace ZB {

IBaseTable::IBaseTable() = default;

IBaseTable::~IBaseTable() = default;

void IBaseTable::onFilterTrigger(int column, int type, QSet<QString> &values)
{
    if (columnFilterable(column) && isFilterType(type))
        takeColumnFilter(column, EFilterType(type), values);
}

void IBaseTable::takeColumnFilter(int, EFilterType, const QSet<QString> &) {}

} // namespace ZB
