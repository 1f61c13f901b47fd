#include <QtCore/QCoreApplication>
#include <QtCore/QElapsedTimer>
#include <QtGui/QWheelEvent>
#include <QtWidgets/QScrollBar>
#include <algorithm>

#include "grid/gridview.h"
#include "records/fieldids.h"
#include "tablechecks.h"
#include "tablesetting.h"

namespace bench {

namespace {

constexpr int paintRounds = 31;
constexpr int pageRows = 40;    ///< a little more than the view shows
constexpr int flashedRows = 33; ///< with six or seven changed cells in each
constexpr int wantedFlashes = 200;
constexpr int flashRounds = 9;
constexpr int fadedMilliseconds = 600; ///< no flash is left after it

/// Pages that follow no order, so that hardly any text is on two of them.
class Pages
{
public:
    explicit Pages(int rows) : pageCount(std::max(1, rows / pageRows - 1)) {}
    int nextRow()
    {
        page = (page * 7919LL + 104729) % pageCount;
        return static_cast<int>(page) * pageRows;
    }

private:
    qint64 pageCount;
    qint64 page = 0;
};

void goTo(OurTable &ours, int row)
{
    ours.table->scrollToKey(ours.model->getData(row)->key());
}

std::vector<BenchRow> paint(bool quick)
{
    TableSetting &s = TableSetting::instance(quick);
    s.sortByPrice();
    OurTable &ours = s.ours();
    Pages pages(ours.model->size());
    QImage before;
    const double jump = medianOf(paintRounds, [&] {
        before = ours.picture();
        const int row = pages.nextRow();
        return secondsOf([&] {
            goTo(ours, row);
            ours.paint();
        });
    });
    checkPicture(ours, before);
    const int two[] = {pages.nextRow(), pages.nextRow()};
    int turn = 0;
    const double seen = medianOf(paintRounds, [&] {
        before = ours.picture();
        const int row = two[turn ^= 1];
        return secondsOf([&] {
            goTo(ours, row);
            ours.paint();
        });
    });
    checkPicture(ours, before);
    const double theme = medianOf(paintRounds, [&] {
        return secondsOf([&] {
            ours.table->themeChanged();
            ours.paint();
        });
    });
    double stockJump = 0;
    double stockSeen = 0;
    double stockCells = 1;
    if (isStockWanted()) {
        StockTable &stock = s.stock();
        stockCells = stock.visibleCells();
        stockJump = medianOf(paintRounds, [&] {
            before = stock.picture();
            const int row = pages.nextRow();
            return secondsOf([&] {
                stock.view->verticalScrollBar()->setValue(row);
                stock.view->viewport()->repaint();
            });
        });
        checkRepainted(before, stock.picture(), "the stock table");
        stockSeen = medianOf(paintRounds, [&] { return secondsOf([&] { stock.view->viewport()->repaint(); }); });
    }
    const auto cells = static_cast<int>(ours.cells().size());
    const auto perCell = [&](const char *name, double ourSeconds, double stockSeconds) {
        return s.row(name, cells, "us/cell", 1e6 * ourSeconds / cells, 1e6 * stockSeconds / stockCells);
    };
    return {perCell("table.repaint", jump, stockJump), perCell("table.repaint_seen", seen, stockSeen),
            s.milliseconds("table.jump", 1, jump, stockJump), s.milliseconds("table.theme", 1, theme, 0)};
}

void wheel(QWidget *widget, int delta)
{
    const QPointF middle = widget->rect().center();
    QWheelEvent event(middle, widget->mapToGlobal(middle.toPoint()), QPoint(), QPoint(0, delta), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(widget, &event);
}

std::vector<BenchRow> scroll(bool quick)
{
    constexpr int steps = 101;
    constexpr int oneStep = -120;
    TableSetting &s = TableSetting::instance(quick);
    OurTable &ours = s.ours();
    goTo(ours, 0);
    ours.paint();
    QWidget *const target = ours.table->childAt(viewWidth / 2, viewHeight / 2);
    QImage before;
    const double ourTime = medianOf(steps, [&] {
        before = ours.picture();
        return secondsOf([&] {
            wheel(target, oneStep);
            ours.paint();
        });
    });
    checkPicture(ours, before);
    double stockTime = 0;
    if (isStockWanted()) {
        StockTable &stock = s.stock();
        stock.view->verticalScrollBar()->setValue(0);
        stockTime = medianOf(steps, [&] {
            return secondsOf([&] {
                wheel(stock.view->viewport(), oneStep);
                stock.view->viewport()->repaint();
            });
        });
        const qint64 ourRows = ours.grid->firstVisibleRow();
        if (ourRows != stock.view->rowAt(0))
            qFatal("%d steps of the wheel went to row %lld of ours and row %d of the stock table", steps, ourRows,
                   stock.view->rowAt(0));
    }
    return {s.milliseconds("table.scroll", 1, ourTime, stockTime)};
}

/// The cells on the screen at one moment.
struct Screen
{
    explicit Screen(const OurTable &ours) : cells(ours.cells()), picture(ours.picture())
    {
        for (const OurCell &cell : cells)
            texts.push_back(ours.model->getData(cell.row)->getDisplayQString(cell.column));
    }
    QRgb ground(std::size_t cell) const { return picture.pixel(cells[cell].place.topLeft() + QPoint(1, 1)); }

    std::vector<OurCell> cells;
    QImage picture;
    std::vector<QString> texts;
};

/// The number of cells that were painted anew; fails loudly unless these are the ones with other texts, and those of
/// them flash that should.
int paintedCells(const OurTable &ours, const Screen &before, const Screen &after)
{
    int painted = 0;
    for (std::size_t at = 0; at < after.cells.size(); ++at) {
        const OurCell &cell = after.cells[at];
        const bool isOther = before.texts[at] != after.texts[at];
        if (isOther != (before.picture.copy(cell.place) != after.picture.copy(cell.place)))
            qFatal("column %d of row %d changed from %s to %s and was%s painted", cell.column, cell.row,
                   qUtf8Printable(before.texts[at]), qUtf8Printable(after.texts[at]), isOther ? " not" : "");
        if ((isOther && ours.model->columnFlashChange(cell.column)) != (before.ground(at) != after.ground(at)))
            qFatal("column %d of row %d does not flash as it should", cell.column, cell.row);
        painted += isOther ? 1 : 0;
    }
    if (painted < wantedFlashes)
        qFatal("only %d cells changed", painted);
    return painted;
}

std::vector<BenchRow> flash(bool quick)
{
    TableSetting &s = TableSetting::instance(quick);
    OurTable &ours = s.ours();
    ours.table->setSortColumns({});
    ours.model->size();
    goTo(ours, 0);
    std::mt19937 random(3);
    const auto changes = [&] {
        Records list;
        for (std::size_t i = 0; i < flashedRows; ++i)
            list.push_back(withOtherDeal(s.orders()[i], random));
        return list;
    };
    int painted = 0; // in the last round
    const double ourTime = medianOf(flashRounds, [&] {
        QElapsedTimer fading;
        for (fading.start(); fading.elapsed() < fadedMilliseconds;)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 10);
        ours.paint();
        const Records list = changes();
        const Screen before(ours);
        const double seconds = secondsOf([&] {
            ours.update(list);
            ours.paint();
        });
        painted = paintedCells(ours, before, Screen(ours));
        return seconds;
    });
    double stockTime = 0;
    if (isStockWanted()) {
        StockTable &stock = s.stock();
        stock.proxy->sort(-1);
        stock.view->verticalScrollBar()->setValue(0);
        QCoreApplication::processEvents();
        stockTime = medianOf(flashRounds, [&] {
            const Records list = changes();
            const QImage before = stock.picture();
            const double seconds = secondsOf([&] {
                for (const auto &order : list)
                    stock.model->update(boost::static_pointer_cast<refhost::OrderRecord>(order));
                stock.view->viewport()->repaint();
            });
            checkRepainted(before, stock.picture(), "changed cells of the stock table");
            return seconds;
        });
    }
    return {s.milliseconds("table.flash", painted, ourTime, stockTime)};
}

const BenchRegistration registrations[] = {
    {"table.repaint", paint},
    {"table.scroll", scroll},
    {"table.flash", flash},
};

} // namespace

} // namespace bench
