#pragma once

#include <QtGui/QImage>
#include <QtGui/QRegion>

#include "grid/gridbody.h"
#include "grid/gridcellpainter.h"
#include "grid/gridchooser.h"
#include "grid/gridheaderpainter.h"
#include "grid/gridkeys.h"
#include "grid/gridmouse.h"
#include "grid/gridpacer.h"
#include "grid/gridrows.h"
#include "grid/gridscrollbars.h"
#include "grid/gridview.h"

namespace ZB {

/// What a GridView is made of, and how a frame comes about. Mouse and keyboard call the small setters below; each notes
/// what it touched and asks for a frame.
class GridViewPrivate
{
public:
    static constexpr int cutNumbersMilliseconds = 1000; ///< between two of its signals

    explicit GridViewPrivate(GridView *view);

    static GridViewPrivate &of(const GridView &view) { return *view.d; }

    /// @name Frames
    /// @{
    void requestFrame();
    /// Brings everything up to date and schedules the repaint. Not while hidden, unless forced.
    void showFrame(bool forced);
    /// Brings the pictures up to date; returns what changed on the screen, device-independent pixels of the view.
    QRegion takeFrame();
    /// takeFrame() and its repaint, without telling anybody: for setters that need to know where things are.
    void sync();
    /// The pictures do not fit the view: it has another size, or was not on the screen while things changed.
    bool mustCatchUp() const { return layoutTouched || !q->isVisible(); }
    void paint(QPainter &painter, const QRegion &region);
    /// Tells what has changed since the last time. The view may be gone afterwards.
    void announce();
    /// Tells of numbers that do not fit, now or when some time has passed since the last time, so that columns that are
    /// widened for them do not dance. The view may be gone afterwards.
    void announceCutNumbers();
    /// @}

    /// @name What has to be done with the next frame
    /// @{
    void touchSource();  ///< another source
    void touchLayout();  ///< sizes, columns, order
    void touchColumns(); ///< what columns look like
    void touchHeader();
    void touchRows();    ///< selection, current cell
    void touchOverlay(); ///< what is drawn over the pictures
    /// @}

    /// Rows stay where they are while this is above zero.
    void hold() { ++holds; }
    void release();

    void applyLook();
    void ensureColumns();
    /// Cells may be being filled just now, by whoever asks.
    bool isTakingFrame() const { return takingFrame; }
    void scrollTo(qint64 x, qint64 y);
    void scrollBy(qint64 dx, qint64 dy) { scrollTo(geometry.scrollX + dx, geometry.scrollY + dy); }
    void showCell(const GridTarget &cell);
    void showColumn(int column);
    void fit(int column, int maximumWidth, bool mayNarrow);

    QPoint toDevice(const QPoint &point) const;
    QRect toLogical(const QRect &rect) const;
    GridTarget targetAt(const GridHit &hit) const;
    /// A column to go on with: the current one, or the first visible.
    int currentColumn() const;
    QString toolTipAt(const QPoint &point);
    /// Where a row is: on the screen as it is shown there, elsewhere as the source says; -1 when it is not shown.
    qint64 placeOfRow(GridRowId row) const;

    GridView *const q;
    GridSource *source = nullptr;
    GridLook look;
    double ratio = 1.0;
    GridGeometry geometry;
    GridRows rows;
    GridChooser chooser{rows, geometry};
    std::vector<boost::shared_ptr<CBaseTableColumnWidgetDelegate>> delegates;
    GridHeaderState headerState;
    GridRowId hoveredRow = NoGridRow; ///< in a column with a delegate
    int hoveredColumn = -1;

    bool numbersVisible = true;
    bool statisticsVisible = false;
    qint64 firstNumber = 1;
    int numberDigits = 0; ///< that the row numbers have room for
    QString statisticsTitle;
    QString emptyText;

    GridCellPainter cells;
    GridBody body{cells};
    GridHeaderPainter headers{cells};
    QImage headerPicture;
    QImage statisticsPicture;
    QStringList statisticsTexts;                    ///< as painted, by model column
    std::vector<GridShownColumn> statisticsColumns; ///< as painted

    GridPacer pacer;
    GridScrollBars bars;
    GridMouse mouse{*this};
    GridKeys keys{*this};
    int holds = 0;
    quint64 frames = 0;

private:
    struct Told ///< what the signals have said last
    {
        qint64 rowCount = 0;
        std::vector<int> columns; ///< visible ones from the left
        GridRowId current = NoGridRow;
        int column = -1;
        quint64 selection = 0;
        qint64 unseen = 0;
        qint64 first = 0;
        std::vector<GridRowId> rows;
    };

    GridFrame frameNow() const;
    void layOut();
    void updateRows();
    QRect updateStatistics(bool ask);
    qint64 untilCutNumbers() const;
    int wantedNumberWidth();
    void paintEmptyText(QPainter &painter) const;
    void paintDrag(QPainter &painter) const;

    QSet<int> cutNumbers; ///< columns, to be told of
    qint64 cutNumbersTold;
    quint64 seenRevision = 0;
    quint64 seenEpoch = 0;
    bool layoutTouched = true;
    bool headerTouched = true;
    bool rowsTouched = true;
    bool overlayTouched = false;
    bool takingFrame = false;
    Told told;
};

} // namespace ZB
