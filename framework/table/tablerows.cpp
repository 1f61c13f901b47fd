#include "table/tablerows.h"

namespace ZB {

QString TableRows::cellText(qint64 row, int column) const
{
    std::vector<HpfShownRow> rows;
    if (row >= 0 && row < rowCount() && column >= 0 && column < columnCount())
        fetchRows(row, 1, rows);
    return rows.empty() ? QString()
                        : rows.front().row->getDisplayQString(column) + rows.front().row->getDisplayUnit(column);
}

} // namespace ZB
