#include <algorithm>
#include <cmath>

#include "table/cellvalue.h"
#include "table/tableshell.h"
#include "zb/cuiresource.h"
#include "zb/etableflag.h"

namespace ZB {

bool TableShell::hasColumn(int column) const
{
    return column >= 0 && column < int(columns.size());
}

std::vector<TableColumnInfo> TableShell::columnInfos() const
{
    std::vector<TableColumnInfo> infos;
    std::transform(columns.begin(), columns.end(), std::back_inserter(infos),
                   [](const Column &column) { return column.info; });
    return infos;
}

void TableShell::updateNumeric(int column)
{
    changeColumn(column, [this, column](GridColumn &shown) {
        shown.numeric = isNumberType(rows->columnType(column)) && shown.alignment.testFlag(Qt::AlignRight);
    });
}

void TableShell::setColumnWidth(int column, int pixels)
{
    if (!hasColumn(column) || pixels <= 0)
        return;
    Column &known = columns[std::size_t(column)];
    known.width = WidthOrigin::Program;
    known.widthGiven = true;
    known.info.defaultWidth = std::max(1, int(std::lround(pixels / CUiResource::instance()->scale())));
    grid->setColumnWidth(column, pixels);
}

void TableShell::setColumnVisible(int column, bool visible)
{
    if (!hasColumn(column))
        return;
    columns[std::size_t(column)].info.defaultVisible = visible;
    grid->setColumnVisible(column, visible);
}

void TableShell::showColumn(int column, bool visible)
{
    grid->setColumnVisible(column, visible);
    if (visible && columns[std::size_t(column)].width == WidthOrigin::Default) {
        columns[std::size_t(column)].width = WidthOrigin::Fitted;
        grid->fitColumn(column);
    }
    saveSoon();
}

void TableShell::setFrozenColumns(int count)
{
    if (grid->frozenColumns() == count)
        return;
    grid->setFrozenColumns(count);
    saveSoon();
}

void TableShell::fitVisibleColumns()
{
    std::vector<int> fitted;
    std::vector<int> widened;
    for (const int column : grid->visibleColumns()) {
        Column &known = columns[std::size_t(column)];
        if (known.width == WidthOrigin::User)
            continue;
        if (known.width == WidthOrigin::Arranged) {
            widened.push_back(column);
            continue;
        }
        known.width = WidthOrigin::Fitted;
        fitted.push_back(column);
    }
    grid->fitColumns(fitted);
    grid->widenColumns(widened);
}

void TableShell::widenForNumbers(const QSet<int> &cut)
{
    std::vector<int> widened;
    for (const int column : cut)
        if (hasColumn(column) && columns[std::size_t(column)].width != WidthOrigin::User)
            widened.push_back(column);
    grid->widenColumns(widened);
}

void TableShell::fitAll()
{
    for (Column &column : columns)
        column.width = WidthOrigin::Fitted;
    grid->fitColumns(grid->visibleColumns());
    saveSoon();
}

/// Columns that are not offered keep their places among the others.
void TableShell::orderOffered(const std::vector<int> &offered)
{
    std::vector<int> order = grid->columnOrder();
    auto next = offered.begin();
    for (int &column : order)
        if (std::find(offered.begin(), offered.end(), column) != offered.end() && next != offered.end())
            column = *next++;
    grid->setColumnOrder(order);
    saveSoon();
}

/// As the program has set the columns up.
void TableShell::resetColumns()
{
    std::vector<int> order(columns.size());
    for (std::size_t column = 0; column < columns.size(); ++column) {
        order[column] = int(column);
        columns[column].width = columns[column].widthGiven ? WidthOrigin::Arranged : WidthOrigin::Default;
        grid->setColumnVisible(int(column), columns[column].info.defaultVisible);
        grid->setColumnWidth(int(column), scaled(columns[column].info.defaultWidth));
    }
    grid->setColumnOrder(order);
    grid->setFrozenColumns(0);
    frame.columnSet.clear();
    fitVisibleColumns();
    saveSoon();
}

void TableShell::setEmptyText(const QString &text)
{
    emptyText = text;
    showEmptyText();
}

void TableShell::showEmptyText()
{
    const bool tells = showsFilters && (menuFlags & MenuClearFilter);
    grid->setEmptyText(tells ? emptyText + QStringLiteral("\n（筛选中，Ctrl+Shift+L 清除）") : emptyText);
}

void TableShell::showMarks(const QVector<QPair<int, int>> &sorts, const QList<int> &filteredColumns)
{
    GridSortMarks marks;
    for (const auto &[column, order] : sorts)
        marks.push_back({column, order != 0});
    const GridSortMarks present = grid->sortMarks();
    const bool same = std::equal(marks.begin(), marks.end(), present.begin(), present.end(),
                                 [](const GridSortMark &a, const GridSortMark &b) {
                                     return a.column == b.column && a.descending == b.descending;
                                 });
    if (!same) {
        std::vector<bool> wereCut;
        for (const GridSortMark &mark : marks)
            wereCut.push_back(grid->isHeaderCut(mark.column));
        grid->setSortMarks(marks);
        for (std::size_t i = 0; i < marks.size(); ++i)
            widenForHeader(marks[i].column, wereCut[i]);
    }
    showsFilters = !filteredColumns.isEmpty();
    showEmptyText();
    for (int column = 0; column < int(columns.size()); ++column) {
        const bool filtered = filteredColumns.contains(column);
        if (grid->column(column).filtered == filtered)
            continue;
        const bool wasCut = grid->isHeaderCut(column);
        changeColumn(column, [filtered](GridColumn &shown) { shown.filtered = filtered; });
        widenForHeader(column, wasCut);
    }
    showHiddenFilters();
}

std::vector<int> TableShell::hiddenFilters() const
{
    std::vector<int> hidden;
    for (int column = 0; column < int(columns.size()); ++column) {
        const GridColumn shown = grid->column(column);
        if (shown.filtered && !shown.visible)
            hidden.push_back(column);
    }
    return hidden;
}

void TableShell::showHiddenFilters()
{
    QStringList names;
    for (const int column : hiddenFilters())
        names.append(columns[std::size_t(column)].info.name);
    overlay.setFilterText(names.isEmpty() ? QString()
                                          : QStringLiteral("隐藏列筛选中：%1").arg(names.join(QChar(0x3001))));
}

/// The signs of a sort and a filter must not push the header's text out. Where the user has made it too narrow for the
/// text alone, it stays so.
void TableShell::widenForHeader(int column, bool wasCut)
{
    if (!hasColumn(column))
        return;
    if (columns[std::size_t(column)].width == WidthOrigin::User) {
        if (!wasCut)
            grid->widenForHeader(column);
        return;
    }
    if (!grid->isHeaderCut(column))
        return; // measuring the cells would bring the rows on the screen up to date, in the middle of a change
    grid->widenColumns({column});
}

} // namespace ZB
