#include "recordtable/cellwidgets.h"

#include <QtWidgets/QWidget>
#include <algorithm>

#include "grid/gridview.h"
#include "table/tablerows.h"
#include "zb/cuiresource.h"

namespace ZB {

CellWidgets::CellWidgets(GridView *gridView, const TableRows &tableRows) : grid(gridView), rows(tableRows)
{
    connect(grid, &GridView::frameShown, this, &CellWidgets::layOut);
}

CellWidgets::~CellWidgets()
{
    clear();
}

void CellWidgets::set(GridRowId row, int column, QWidget *widget)
{
    std::map<int, Placed> &ofRow = widgets[row];
    if (const auto before = ofRow.find(column); before != ofRow.end()) {
        if (before->second.widget == widget)
            return;
        discard(before->second);
        ofRow.erase(before);
    }
    if (!widget) {
        if (ofRow.empty())
            widgets.erase(row);
        return;
    }
    auto *frame = new QWidget(grid);
    frame->hide();
    widget->setParent(frame);
    widget->show();
    ofRow[column] = {widget, frame};
    grid->refresh();
    layOut();
}

QWidget *CellWidgets::at(GridRowId row, int column) const
{
    const auto ofRow = widgets.find(row);
    if (ofRow == widgets.end())
        return nullptr;
    const auto found = ofRow->second.find(column);
    return found == ofRow->second.end() ? nullptr : found->second.widget.data();
}

void CellWidgets::removeRow(GridRowId row)
{
    const auto ofRow = widgets.find(row);
    if (ofRow == widgets.end())
        return;
    for (const auto &[column, placed] : ofRow->second)
        discard(placed);
    widgets.erase(ofRow);
}

void CellWidgets::clear()
{
    for (const auto &[row, ofRow] : widgets)
        for (const auto &[column, placed] : ofRow)
            discard(placed);
    widgets.clear();
}

/// A widget may be the sender of the signal that led here.
void CellWidgets::discard(const Placed &placed)
{
    if (!placed.frame)
        return;
    placed.frame->hide();
    placed.frame->deleteLater();
}

void CellWidgets::layOut()
{
    if (widgets.empty() && shownFrames.empty())
        return;
    std::vector<QPointer<QWidget>> before;
    before.swap(shownFrames);
    const qint64 first = grid->firstVisibleRow();
    for (qint64 row = first; row < first + grid->visibleRowCount() + 2; ++row) {
        const GridRowId id = rows.idAt(row);
        const auto ofRow = widgets.find(id);
        if (id == NoGridRow || ofRow == widgets.end())
            continue;
        for (const auto &[column, placed] : ofRow->second)
            if (placed.frame && placed.widget && place(id, column, placed))
                shownFrames.push_back(placed.frame);
    }
    for (const QPointer<QWidget> &frame : before)
        if (frame && std::find(shownFrames.begin(), shownFrames.end(), frame) == shownFrames.end())
            frame->hide();
}

bool CellWidgets::place(GridRowId row, int column, const Placed &placed) const
{
    const QRect visible = grid->cellRect(row, column);
    if (visible.isEmpty())
        return false;
    const int gap = scaled(2);
    const QRect inside = grid->wholeCellRect(row, column).adjusted(gap, gap, -gap - 1, -gap - 1);
    const QRect frame = inside & visible;
    if (frame.isEmpty())
        return false;
    placed.frame->setGeometry(frame);
    placed.widget->setGeometry(QRect(inside.topLeft() - frame.topLeft(), inside.size()));
    placed.frame->show();
    return true;
}

} // namespace ZB
