#include <QtCore/QCoreApplication>
#include <QtGui/QWheelEvent>
#include <QtWidgets/QScrollBar>
#include <algorithm>

#include "records/fieldids.h"
#include "tablesetting.h"

namespace bench {

namespace {

constexpr int paintRounds = 31;
constexpr int pageRows = 40;    ///< a little more than the view shows
constexpr int flashedRows = 33; ///< with six or seven changed cells in each

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
    const int cells = ours.visibleCells();
    Pages pages(ours.model->size());
    const double jump = medianOf(paintRounds, [&] {
        const int row = pages.nextRow();
        return secondsOf([&] {
            goTo(ours, row);
            ours.paint();
        });
    });
    const int two[] = {pages.nextRow(), pages.nextRow()};
    int turn = 0;
    const double seen = medianOf(paintRounds, [&] {
        const int row = two[turn ^= 1];
        return secondsOf([&] {
            goTo(ours, row);
            ours.paint();
        });
    });
    const double theme = medianOf(paintRounds, [&] {
        return secondsOf([&] {
            ours.table->themeChanged();
            ours.paint();
        });
    });
    double stockJump = 0;
    double stockSeen = 0;
    if (isStockWanted()) {
        StockTable &stock = s.stock();
        stockJump = medianOf(paintRounds, [&] {
            const int row = pages.nextRow();
            return secondsOf([&] {
                stock.view->verticalScrollBar()->setValue(row);
                stock.view->viewport()->repaint();
            });
        });
        stockSeen = medianOf(paintRounds, [&] { return secondsOf([&] { stock.view->viewport()->repaint(); }); });
    }
    const double perCell = 1e6 / cells;
    return {smallerIsBetter("table.repaint", cells, "us/cell", jump * perCell, stockJump * perCell),
            smallerIsBetter("table.repaint_seen", cells, "us/cell", seen * perCell, stockSeen * perCell),
            smallerIsBetter("table.jump", 1, "ms", jump * toMilliseconds, stockJump * toMilliseconds),
            smallerIsBetter("table.theme", 1, "ms", theme * toMilliseconds, 0)};
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
    QWidget *const target = ours.table->childAt(viewWidth / 2, viewHeight / 2);
    const double ourTime = medianOf(steps, [&] {
        return secondsOf([&] {
            wheel(target, oneStep);
            ours.paint();
        });
    });
    const double stockTime = medianOf(isStockWanted() ? steps : 1, [&] {
        return stockSecondsOf([&] {
            wheel(s.stock().view->viewport(), oneStep);
            s.stock().view->viewport()->repaint();
        });
    });
    return {smallerIsBetter("table.scroll", 1, "ms", ourTime * toMilliseconds, stockTime * toMilliseconds)};
}

/// What the first rows show, cell by cell.
std::vector<QString> shownTexts(const OurTable &ours, int rows)
{
    std::vector<QString> texts;
    for (int row = 0; row < rows; ++row) {
        const auto data = ours.model->getData(row);
        for (int column = 0; column < ours.model->columnCount(); ++column)
            texts.push_back(data->getDisplayQString(column));
    }
    return texts;
}

std::vector<BenchRow> flash(bool quick)
{
    TableSetting &s = TableSetting::instance(quick);
    OurTable &ours = s.ours();
    ours.table->setSortColumns({});
    ours.model->size();
    ours.table->scrollToKey(s.orders().front()->getKey());
    ours.paint();
    std::mt19937 random(3);
    const auto changes = [&] {
        Records list;
        for (std::size_t i = 0; i < flashedRows; ++i)
            list.push_back(withOtherDeal(s.orders()[i], random));
        return list;
    };
    int changedCells = 0; // in the last round
    const double ourTime = medianOf(paintRounds, [&] {
        const Records list = changes();
        const std::vector<QString> before = shownTexts(ours, flashedRows);
        const double seconds = secondsOf([&] {
            ours.update(list);
            ours.paint();
        });
        const std::vector<QString> after = shownTexts(ours, flashedRows);
        changedCells = 0;
        for (std::size_t cell = 0; cell < before.size(); ++cell)
            changedCells += before[cell] != after[cell] ? 1 : 0;
        return seconds;
    });
    double stockTime = 0;
    if (isStockWanted()) {
        StockTable &stock = s.stock();
        stock.proxy->sort(-1);
        stock.view->verticalScrollBar()->setValue(0);
        QCoreApplication::processEvents();
        stockTime = medianOf(paintRounds, [&] {
            const Records list = changes();
            return secondsOf([&] {
                for (const auto &order : list)
                    stock.model->update(boost::static_pointer_cast<refhost::OrderRecord>(order));
                stock.view->viewport()->repaint();
            });
        });
    }
    return {smallerIsBetter("table.flash", changedCells, "ms", ourTime * toMilliseconds, stockTime * toMilliseconds)};
}

/// A desk's day compressed: 100,000 updates a second under a sort and a filter, half of them of the sorted column.
std::vector<BenchRow> frames(bool quick)
{
    constexpr int framesPerSecond = 60;
    constexpr int perFrame = 100000 / framesPerSecond;
    TableSetting &s = TableSetting::instance(quick);
    OurTable &ours = s.ours();
    s.sortByPrice();
    const int column = ours.column(refhost::OrderDirection);
    QPair<ZB::EFilterType, QSet<QString>> filter(ZB::FilterExact, {ours.model->getData(0)->getFilterQString(column)});
    ours.model->filterColumn(column, filter);
    ours.model->size();
    const int seconds = quick ? 5 : 60;
    std::vector<double> times;
    for (int frame = 0; frame < seconds * framesPerSecond; ++frame) {
        Records changes;
        for (const auto change : {withOtherPrice, withOtherFill})
            for (const OrderPtr &order : s.changed(perFrame / 2, change))
                changes.push_back(order);
        times.push_back(secondsOf([&] {
            ours.update(changes);
            ours.paint();
        }));
    }
    ours.model->clearFilter();
    std::sort(times.begin(), times.end());
    const auto at = [&](double part) {
        return times[static_cast<std::size_t>(part * static_cast<double>(times.size() - 1))] * toMilliseconds;
    };
    const auto n = static_cast<long long>(times.size());
    return {smallerIsBetter("table.frames_p50", n, "ms", at(0.5), 0),
            smallerIsBetter("table.frames_p99", n, "ms", at(0.99), 0),
            smallerIsBetter("table.frames_worst", n, "ms", at(1), 0)};
}

const BenchRegistration registrations[] = {
    {"table.repaint", paint},
    {"table.scroll", scroll},
    {"table.flash", flash},
    {"table.frames", frames},
};

} // namespace

} // namespace bench
