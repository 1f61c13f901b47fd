#pragma once

#include <QtCore/QPoint>
#include <QtCore/QRect>
#include <memory>
#include <string>

#include "window/feedpump.h"
#include "zb/cbasetablesettingparam.h"

namespace KV {
class CHpfDataTable;
}

namespace ZB {
class GridView;
}

namespace terminal {

class TablePanel;

/// A panel's table as the tour of features goes over it: where its headers and cells are on the screen, and how it is
/// made to look as before the tour. Positions are those of the grid, columns are named by their fields. GUI thread.
class TouredTable
{
public:
    /// The panel outlives it. From here on the table is arranged as `plain` says.
    TouredTable(TablePanel &panel, const ZB::CBaseTableSettingParam &plain);
    /// As the user had arranged it; without filters.
    ~TouredTable();

    TouredTable(const TouredTable &) = delete;
    TouredTable &operator=(const TouredTable &) = delete;

    TablePanel &panel() const { return tablePanel; }
    KV::CHpfDataTable &table() const;
    ZB::GridView &grid() const { return *view; }
    /// Without filter, pause and selection, arranged as at first; the work for that may go on.
    void tidy();
    void showNewest();

    int column(int field) const;
    /// A column that is out of sight is brought into it.
    QPoint header(int field) const;
    QPoint funnel(int field) const;
    /// Where the column is taken hold of to make it wider or narrower.
    QPoint edge(int field) const;
    /// A line of the screen, from 0 at the top; a negative one counts from the last.
    QPoint cell(int line, int field) const;

    /// So many records come: the newest ones again, each as a new one.
    void bringNew(int count);
    /// The newest open order of a stock on the list is filled.
    void fillOrder();

private:
    void bring(const FeedPump::Records &records);

    TablePanel &tablePanel;
    ZB::GridView *view;
    const ZB::CBaseTableSettingParam plain;
    ZB::CBaseTableSettingParam users;
    int brought = 0;
};

} // namespace terminal
