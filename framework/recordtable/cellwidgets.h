#pragma once

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <map>
#include <unordered_map>
#include <vector>

#include "grid/gridsource.h"

class QWidget;

namespace ZB {

class GridView;
class TableRows;

/// Widgets that stand over the cells of a grid and move with them. It owns them. A frame costs what is on the screen,
/// however many widgets there are. GUI thread.
class CellWidgets : public QObject
{
    Q_OBJECT

public:
    /// Both outlive it.
    CellWidgets(GridView *grid, const TableRows &rows);
    ~CellWidgets() override;

    /// Null takes the widget of the cell away.
    void set(GridRowId row, int column, QWidget *widget);
    QWidget *at(GridRowId row, int column) const;
    void removeRow(GridRowId row);
    void clear();

private:
    /// A widget inside a frame that cuts it off where its cell is cut off.
    struct Placed
    {
        QPointer<QWidget> widget;
        QPointer<QWidget> frame;
    };

    void layOut();
    bool place(GridRowId row, int column, const Placed &placed) const;
    static void discard(const Placed &placed);

    GridView *grid;
    const TableRows &rows;
    std::unordered_map<GridRowId, std::map<int, Placed>> widgets;
    std::vector<QPointer<QWidget>> shownFrames;
};

} // namespace ZB
