#include "zb/coddevenrowtable.h"

namespace ZB {

COddEvenRowTable::COddEvenRowTable(int tableId, QWidget *parent, int options) : CStandardTable(tableId, parent, options)
{
}

COddEvenRowTable::~COddEvenRowTable() = default;

bool COddEvenRowTable::hasOddEvenRows() const
{
    return options() & TableOddEvenRows;
}

} // namespace ZB
