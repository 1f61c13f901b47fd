#pragma once

#include <QtCore/QRect>
#include <QtCore/QSet>
#include <QtGui/QImage>
#include <boost/shared_ptr.hpp>
#include <utility>
#include <vector>

#include "frameworkexport.h"
#include "grid/gridcell.h"
#include "grid/gridgeometry.h"
#include "grid/gridsource.h"

class QPainter;

namespace ZB {

class CBaseTableColumnWidgetDelegate;
class GridCanvas;
class GridCellPainter;
class GridSelection;

/// What a frame shows besides the contents of the cells. Everything in it outlives the call that it is given to.
struct GridFrame
{
    const GridGeometry &geometry;
    const GridWindow &window; ///< what the source fetched last: all rows of which something shows
    const GridSelection &selection;
    const std::vector<boost::shared_ptr<CBaseTableColumnWidgetDelegate>>
        &delegates; ///< by model column, may be shorter
    GridRowId currentRow = NoGridRow;
    int currentColumn = -1;
    GridRowId hoveredRow = NoGridRow; ///< for delegates
    int hoveredColumn = -1;
    bool focused = false;
    bool searching = false; ///< the current cell is a search's hit: framed without the focus too
    bool oddEven = false;
    qint64 firstNumber = 1;
    double pixelRatio = 1.0;
    qint64 now = 0; ///< milliseconds of a steady clock
};

/// Pictures of the rows on the screen, in device pixels. Every row keeps its picture for as long as it is on the
/// screen, wherever it stands there: scrolling and moving rows only puts pictures elsewhere, and a cell is drawn again
/// when something in it has changed. GUI thread.
class FRAMEWORK_API GridBody
{
public:
    explicit GridBody(GridCellPainter &painter);
    ~GridBody();

    /// Fonts, colours or what columns look like have changed: every cell is drawn again.
    void invalidate();
    /// Other rows altogether, whatever their ids say.
    void forget();

    /// Brings the pictures up to date. Returns what has to be put on the screen again, in device pixels of the view;
    /// costs some nanoseconds per visible cell when nothing changed, and asks the source only about rows with another
    /// version. Without a source there are no rows.
    std::vector<QRect> update(GridSource *source, const GridFrame &frame);

    /// Puts the pictures of the last update into `area` of a target in device pixels.
    void paint(QPainter &painter, const QRect &area) const;

    /// Some cell is still fading: update() is wanted again soon.
    bool isFlashing() const { return flashing; }
    /// Columns of which update() has drawn a number that did not fit, since this was asked last.
    QSet<int> takeCutNumbers() { return std::exchange(cutNumbers, {}); }
    /// A cell of the last update; null when it was not on the screen.
    const GridCell *cell(int windowRow, int column) const;

private:
    struct Slot
    {
        GridRow row;
        qint64 number = 0;
        quint8 decor = 0; ///< of the row, as its number and its rest are painted
        bool painted = false;
        std::vector<GridCell> cells; ///< by model column
    };
    struct Place
    {
        GridRowId row;
        int slot;
    };

    bool layOut(const GridFrame &frame, int columnCount);
    void moveSideways(const GridFrame &frame, const std::vector<GridShownColumn> &next);
    void forgetOutOfSight(const std::vector<GridShownColumn> &next, size_t columnCount);
    bool assignSlots(const GridFrame &frame);
    int takeSlot(std::vector<bool> &taken, quint8 decor);
    QRect updateRow(GridSource &source, const GridFrame &frame, int index);
    bool updateCell(GridSource &source, const GridFrame &frame, int index, bool ask, const GridShownColumn &where);
    void ask(GridSource &source, int index, int column, GridCell &cell, qint64 now);
    void paintCell(const GridFrame &frame, int index, const GridShownColumn &where, GridCell &cell);
    bool paintGround(GridCanvas &canvas, const GridFrame &frame, const QRect &rect, const GridShownColumn &where,
                     const GridCell &cell);
    /// Lets the column's delegate paint; returns whether the cell's text is still to be drawn, and which.
    bool paintDelegate(const GridFrame &frame, int index, const GridShownColumn &where, GridCell &cell);
    quint8 rowDecor(const GridFrame &frame, int index) const;
    quint8 cellDecor(const GridFrame &frame, int index, int column, quint8 ofRow) const;
    void paintMargins(const GridFrame &frame, int index, quint8 decor);

    GridCellPainter &cells;
    QImage strip; ///< one slot below the other
    std::vector<Slot> slotStore;
    std::vector<Place> places; ///< of the window's rows
    std::vector<GridShownColumn> shown;
    std::vector<GridPlacedColumn> placed; ///< what `shown` was made of
    int knownColumns = 0;
    int frozen = 0;
    int numberWidth = 0;
    int rowHeight = 0;
    qint64 scrollX = 0;
    qint64 firstRow = 0;
    QRect body;
    int topOffset = 0; ///< of the first row, from the body's top; 0 or negative
    quint64 epoch = 0;
    bool flashing = false;
    QSet<int> cutNumbers;
};

} // namespace ZB
