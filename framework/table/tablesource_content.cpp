#include <cmath>

#include "grid/gridunit.h"
#include "table/cellvalue.h"
#include "table/tablesource.h"
#include "zb/cuiresource.h"

namespace ZB {

void TableSource::content(int windowRow, int column, GridContent &content)
{
    const auto at = std::size_t(windowRow);
    if (!model || windowRow < 0 || at >= window.size() || !window[at].row)
        return;
    IBaseHpfTableData &row = *window[at].row;
    content.text = row.getDisplayQString(column);
    content.unit = row.getDisplayUnit(column);
    if (content.unit.isEmpty() && isNumberType(model->columnType(column)))
        content.unit = takeUnit(content.text);
    content.color = row.getColor(column);
    content.background = row.getBackgroundColor(column);
    if (!content.background)
        if (const int mark = markOf(at); mark >= 0)
            content.background = &markTints[std::size_t(mark)];
    if (!content.background)
        content.background = columnBackground(column);
    if (const QString icon = row.getItemIconKey(column); !icon.isEmpty())
        content.icon = CUiResource::instance()->getPixmap(icon);
}

const QColor *TableSource::columnBackground(int column)
{
    auto known = columnBackgrounds.find(column);
    if (known == columnBackgrounds.end()) {
        const QColor *color = model->getBackgroundColor(column);
        known = columnBackgrounds.emplace(column, color ? *color : plainBackground).first;
    }
    return known->second == plainBackground ? nullptr : &known->second;
}

int TableSource::markOf(std::size_t windowRow)
{
    if (marks.isEmpty())
        return -1;
    int &mark = windowMarks[windowRow];
    if (mark != unknownMark)
        return mark;
    mark = -1;
    for (int rule = 0; rule < marks.size() && mark < 0; ++rule) {
        const CellValue value =
            cellValue(*window[windowRow].row, marks[rule].column, model->columnType(marks[rule].column));
        const auto *number = std::get_if<CellNumber>(&value);
        if (number && std::abs(toDouble(*number)) >= marks[rule].threshold)
            mark = rule;
    }
    return mark;
}

GridFlash TableSource::flash(int windowRow, int column)
{
    const auto at = std::size_t(windowRow);
    if (!model || windowRow < 0 || at >= window.size() || !window[at].row)
        return GridFlash::None;
    const IBaseHpfTableModel::Row &row = window[at].row;
    return isFlashing(window[at], column) ? direction(row, window[at].id, column) : GridFlash::None;
}

/// A model answers for an index, at which another row may stand by now, or while it is answering; then the row speaks
/// for itself.
bool TableSource::isFlashing(const HpfShownRow &shown, int column) const
{
    const int index = holding ? -1 : HpfModelAccess::indexOf(*model, shown.id);
    const bool answer = index >= 0 && model->isFlashChange(index, column);
    if (index >= 0 && HpfModelAccess::indexOf(*model, shown.id) == index)
        return answer;
    return model->columnFlashChange(column) && shown.row->isFlashChange(column);
}

/// Rows that do not know by how much they changed are compared with the row that stood there before.
GridFlash TableSource::direction(const IBaseHpfTableModel::Row &row, GridRowId id, int column) const
{
    double change = row->getChangedValue(column);
    const QVariant::Type type = model->columnType(column);
    if (change == 0.0 && isNumberType(type))
        for (const HpfShownRow &old : before)
            if (old.id == id && old.row && old.row != row)
                change = row->getDouble(column) - old.row->getDouble(column);
    return flashOfChange(change, type);
}

QString TableSource::tip(int windowRow, int column) const
{
    const auto at = std::size_t(windowRow);
    return windowRow >= 0 && at < window.size() && window[at].row ? window[at].row->getItemIconTip(column) : QString();
}

} // namespace ZB
