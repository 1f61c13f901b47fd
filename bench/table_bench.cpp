#include "benchcase.h"
#include "orderset.h"
#include "stocktable.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QElapsedTimer>
#include <QtCore/QTimer>
#include <QtGui/QWheelEvent>
#include <QtWidgets/QScrollBar>
#include <algorithm>
#include <boost/make_shared.hpp>
#include <malloc.h>

#include "model/chpfthreaddatamodel.h"
#include "records/fieldids.h"
#include "table/chpfdatatable.h"

namespace bench {

namespace {

constexpr int fullCount = 1000000;
constexpr int quickCount = 50000;
constexpr int batch = 2000;
constexpr int flashed = 200;
constexpr int rounds = 7;

using Records = std::vector<boost::shared_ptr<kdservice::IData>>;

/// Our table over a threaded model, shown at the same size as the stock one.
struct OurTable
{
    OurTable()
        : model(boost::make_shared<KV::CHpfThreadDataModel>(orderMetaId(), kdservice::TraderStock)),
          table(new KV::CHpfDataTable(990, orderMetaId(), nullptr, kdservice::TraderStock, false))
    {
        table->setDataModel(model.get());
        table->resize(viewWidth, viewHeight);
        table->show();
        for (int column = 0; column < model->columnCount(); ++column)
            table->setColumnWidth(column, 68);
        QCoreApplication::processEvents();
    }

    void paint()
    {
        table->updateTable();
        table->repaint();
    }

    void load(const std::vector<OrderPtr> &orders)
    {
        model->addDatas(Records(orders.begin(), orders.end()));
        while (model->allSize() < static_cast<int>(orders.size()))
            QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
        paint();
    }

    void update(const std::vector<OrderPtr> &orders)
    {
        for (const OrderPtr &order : orders)
            table->updateData(order, false);
    }

    int column(int fieldId) const { return table->getColumnIdByFileId(fieldId); }

    boost::shared_ptr<KV::CHpfThreadDataModel> model;
    std::unique_ptr<KV::CHpfDataTable> table;
};

/// The records of a run and both tables over them. One for the whole program: a million rows are made once.
struct Setting
{
    explicit Setting(int n) : count(n), random(7), orders(makeOrders(n, 1)) {}

    OurTable &ours()
    {
        if (!ourTable) {
            ourTable = std::make_unique<OurTable>();
            ourTable->load(orders);
        }
        return *ourTable;
    }

    StockTable &stock()
    {
        if (!stockTable)
            stockTable = std::make_unique<StockTable>(orders);
        return *stockTable;
    }

    template <typename Change>
    std::vector<OrderPtr> changed(int howMany, Change change)
    {
        std::vector<OrderPtr> list;
        for (int i = 0; i < howMany; ++i)
            list.push_back(
                change(orders[std::uniform_int_distribution<std::size_t>(0, orders.size() - 1)(random)], random));
        return list;
    }

    std::vector<OrderPtr> added(int howMany)
    {
        std::vector<OrderPtr> list;
        for (int i = 0; i < howMany; ++i)
            list.push_back(makeOrder(count + nextNew++, random));
        return list;
    }

    int count;
    std::mt19937 random;
    std::vector<OrderPtr> orders;
    std::unique_ptr<OurTable> ourTable;
    std::unique_ptr<StockTable> stockTable;
    int nextNew = 0;
};

Setting &setting(bool quick)
{
    static Setting made(quick ? quickCount : fullCount);
    return made;
}

BenchRow row(const char *name, long long n, const char *unit, double ours, double stock)
{
    return {name, n, unit, ours, stock, stock > 0 && ours > 0 ? stock / ours : 0};
}

void repaint(QTableView &view)
{
    QCoreApplication::processEvents();
    view.viewport()->repaint();
}

constexpr double toMs = 1e3;

/// Where the price is on the screen of both tables, and how both are sorted by it.
void sortByPrice(Setting &s, int order)
{
    s.ours().table->setSortColumns({{s.ours().column(refhost::OrderPrice), order}});
    s.ours().model->getData(0);
    s.stock().proxy->sort(s.stock().model->columnOfField(refhost::OrderPrice),
                          order == 0 ? Qt::AscendingOrder : Qt::DescendingOrder);
}

/// Loading: what users wait for, and the longest time in which the window could not answer.
std::vector<BenchRow> load(bool quick)
{
    Setting &s = setting(quick);
    s.ourTable.reset();
    OurTable fresh;
    const auto before = mallinfo2().uordblks;
    double worst = 0;
    QElapsedTimer sinceTurn;
    QTimer heart;
    QObject::connect(&heart, &QTimer::timeout, [&] {
        worst = std::max(worst, static_cast<double>(sinceTurn.nsecsElapsed()) * 1e-6);
        sinceTurn.restart();
    });
    heart.start(0);
    sinceTurn.start();
    const double seconds = secondsOf([&] { fresh.load(s.orders); });
    heart.stop();
    const double bytes = static_cast<double>(mallinfo2().uordblks - before) / s.count;
    const double stockSeconds = secondsOf([&] { s.stockTable = std::make_unique<StockTable>(s.orders); });
    const double clearing = secondsOf([&] {
        fresh.table->clear();
        fresh.paint();
    });
    return {row("table.load_1m", s.count, "s", seconds, stockSeconds), row("table.load_stall", s.count, "ms", worst, 0),
            row("table.row_bytes", s.count, "bytes", bytes, 0),
            row("table.clear_1m", s.count, "ms", clearing * toMs, 0)};
}

std::vector<BenchRow> sort(bool quick)
{
    Setting &s = setting(quick);
    OurTable &ours = s.ours();
    StockTable &stock = s.stock();
    int order = 0;
    const int ourColumn = ours.column(refhost::OrderPrice);
    const double ourTime = medianOf(rounds, [&] {
        order = 1 - order;
        ours.table->setSortColumns({});
        ours.model->getData(0);
        return secondsOf([&] {
            ours.table->setSortColumns({{ourColumn, order}});
            ours.model->getData(0);
            ours.paint();
        });
    });
    const int stockColumn = stock.model->columnOfField(refhost::OrderPrice);
    const double stockTime = medianOf(3, [&] {
        stock.proxy->sort(-1);
        return secondsOf([&] {
            stock.proxy->sort(stockColumn, Qt::DescendingOrder);
            repaint(*stock.view);
        });
    });
    return {row("table.sort_1m", s.count, "ms", ourTime * toMs, stockTime * toMs)};
}

std::vector<BenchRow> filter(bool quick)
{
    Setting &s = setting(quick);
    // Other cases have added more rows to one table than to the other.
    s.ourTable.reset();
    s.stockTable.reset();
    sortByPrice(s, 1);
    OurTable &ours = s.ours();
    StockTable &stock = s.stock();
    const int column = ours.column(refhost::OrderStatus);
    const QString chosen = ours.model->getData(0)->getFilterQString(column);
    QSet<QString> values{chosen};
    const double ourTime = medianOf(rounds, [&] {
        ours.model->clearFilter();
        ours.model->size();
        return secondsOf([&] {
            QPair<ZB::EFilterType, QSet<QString>> filter(ZB::FilterExact, values);
            ours.model->filterColumn(column, filter);
            ours.model->size();
            ours.paint();
        });
    });
    const int passed = ours.model->size();

    const auto changes = s.changed(batch, withOtherPrice);
    const double underFilter = secondsOf([&] {
        ours.update(changes);
        ours.paint();
    });
    ours.model->clearFilter();
    ours.paint();

    // The stock way takes minutes at a million rows and grows with the square of their number: one round.
    const double stockTime = secondsOf([&] {
        stock.proxy->setValues(stock.model->columnOfField(refhost::OrderStatus), values);
        repaint(*stock.view);
    });
    if (stock.proxy->rowCount() != passed)
        qFatal("the two tables do not agree on the filter: %d and %d rows", passed, stock.proxy->rowCount());
    s.stockTable = std::make_unique<StockTable>(s.orders);
    return {row("table.filter_1m", s.count, "ms", ourTime * toMs, stockTime * toMs),
            row("table.update_filtered_1m", batch, "ms", underFilter * toMs, 0)};
}

std::vector<BenchRow> updateSorted(bool quick)
{
    Setting &s = setting(quick);
    sortByPrice(s, 1);
    const double ourTime = medianOf(rounds, [&] {
        const auto changes = s.changed(batch, withOtherPrice);
        return secondsOf([&] {
            s.ours().update(changes);
            s.ours().paint();
        });
    });
    const auto changes = s.changed(batch, withOtherPrice);
    const double stockTime = secondsOf([&] {
        for (const OrderPtr &order : changes)
            s.stock().model->update(order);
        repaint(*s.stock().view);
    });
    return {row("table.update_sorted_1m", batch, "ms", ourTime * toMs, stockTime * toMs)};
}

std::vector<BenchRow> insertSorted(bool quick)
{
    Setting &s = setting(quick);
    sortByPrice(s, 1);
    const double ourTime = medianOf(rounds, [&] {
        const auto fresh = s.added(batch);
        return secondsOf([&] {
            s.ours().update(fresh);
            s.ours().paint();
        });
    });
    const auto fresh = s.added(batch);
    const double stockTime = secondsOf([&] {
        for (const OrderPtr &order : fresh)
            s.stock().model->append(order);
        repaint(*s.stock().view);
    });
    return {row("table.insert_sorted_1m", batch, "ms", ourTime * toMs, stockTime * toMs)};
}

std::vector<BenchRow> update(bool quick)
{
    Setting &s = setting(quick);
    sortByPrice(s, 1);
    constexpr int many = 100000;
    const auto changes = s.changed(many, withOtherFill);
    const double ourTime = medianOf(rounds, [&] {
        return secondsOf([&] {
            s.ours().update(changes);
            s.ours().paint();
        });
    });
    const double stockTime = medianOf(3, [&] {
        return secondsOf([&] {
            for (const OrderPtr &order : changes)
                s.stock().model->update(order);
            repaint(*s.stock().view);
        });
    });
    return {{"table.update_1m", many, "1/s", many / ourTime, many / stockTime, stockTime / ourTime}};
}

/// Cells on the screen of our table.
int visibleCells(const OurTable &ours)
{
    return (viewHeight / 24 - 2) * ours.model->columnCount();
}

std::vector<BenchRow> paint(bool quick)
{
    Setting &s = setting(quick);
    sortByPrice(s, 1);
    OurTable &ours = s.ours();
    StockTable &stock = s.stock();
    const int cells = visibleCells(ours);
    const int pages = std::max(1, ours.model->size() / 40 - 1);
    // A theme change repaints everything; jumping from page to page changes nearly all texts.
    const double seen = medianOf(31, [&] {
        return secondsOf([&] {
            ours.table->themeChanged();
            ours.paint();
        });
    });
    int page = 0;
    const auto ourJump = [&] {
        page = (page * 7919 + 104729) % pages;
        ours.table->scrollToKey(ours.model->getData(page * 40)->key());
        return secondsOf([&] { ours.paint(); });
    };
    const double jump = medianOf(31, ourJump);
    const double stockSeen = medianOf(31, [&] { return secondsOf([&] { stock.view->viewport()->repaint(); }); });
    const double stockJump = medianOf(31, [&] {
        page = (page * 7919 + 104729) % pages;
        return secondsOf([&] {
            stock.view->verticalScrollBar()->setValue(page * 40);
            stock.view->viewport()->repaint();
        });
    });
    return {row("table.repaint_seen", cells, "us/cell", seen * 1e6 / cells, stockSeen * 1e6 / cells),
            row("table.repaint", cells, "us/cell", jump * 1e6 / cells, stockJump * 1e6 / cells),
            row("table.jump", 1, "ms", jump * toMs, stockJump * toMs)};
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
    Setting &s = setting(quick);
    OurTable &ours = s.ours();
    QWidget *target = ours.table->childAt(viewWidth / 2, viewHeight / 2);
    const double ourTime = medianOf(101, [&] {
        return secondsOf([&] {
            wheel(target, -120);
            ours.paint();
        });
    });
    const double stockTime = medianOf(101, [&] {
        return secondsOf([&] {
            wheel(s.stock().view->viewport(), -120);
            s.stock().view->viewport()->repaint();
        });
    });
    return {row("table.scroll", 1, "ms", ourTime * toMs, stockTime * toMs)};
}

std::vector<BenchRow> flash(bool quick)
{
    Setting &s = setting(quick);
    s.ours().table->setSortColumns({});
    s.stock().proxy->sort(-1);
    s.ours().table->scrollToKey(s.orders.front()->getKey());
    s.stock().view->verticalScrollBar()->setValue(0);
    s.ours().paint();
    repaint(*s.stock().view);
    const auto changes = [&] {
        std::vector<OrderPtr> list;
        for (int i = 0; i < 30; ++i)
            list.push_back(withOtherFill(s.orders[static_cast<std::size_t>(i)], s.random));
        return list;
    };
    // A changed order shows in six or seven cells of its row.
    const double ourTime = medianOf(31, [&] {
        const auto list = changes();
        return secondsOf([&] {
            s.ours().update(list);
            s.ours().paint();
        });
    });
    const double stockTime = medianOf(31, [&] {
        const auto list = changes();
        return secondsOf([&] {
            for (const OrderPtr &order : list)
                s.stock().model->update(order);
            s.stock().view->viewport()->repaint();
        });
    });
    return {row("table.flash", flashed, "ms", ourTime * toMs, stockTime * toMs)};
}

/// A desk's day compressed: 100,000 updates a second under a sort and a filter, frame by frame.
std::vector<BenchRow> frames(bool quick)
{
    Setting &s = setting(quick);
    OurTable &ours = s.ours();
    sortByPrice(s, 1);
    const int column = ours.column(refhost::OrderDirection);
    QPair<ZB::EFilterType, QSet<QString>> filter(ZB::FilterExact, {ours.model->getData(0)->getFilterQString(column)});
    ours.model->filterColumn(column, filter);
    constexpr int perSecond = 100000;
    constexpr int framesPerSecond = 60;
    const int seconds = quick ? 5 : 60;
    std::vector<double> times;
    for (int frame = 0; frame < seconds * framesPerSecond; ++frame) {
        const auto changes = s.changed(perSecond / framesPerSecond / 2, withOtherPrice);
        const auto fills = s.changed(perSecond / framesPerSecond / 2, withOtherFill);
        times.push_back(secondsOf([&] {
            ours.update(changes);
            ours.update(fills);
            ours.paint();
        }));
    }
    ours.model->clearFilter();
    std::sort(times.begin(), times.end());
    const auto at = [&](double part) {
        return times[static_cast<std::size_t>(part * static_cast<double>(times.size() - 1))] * toMs;
    };
    const auto n = static_cast<long long>(times.size());
    return {row("table.frames_p50", n, "ms", at(0.5), 0), row("table.frames_p99", n, "ms", at(0.99), 0),
            row("table.frames_worst", n, "ms", at(1), 0)};
}

const BenchRegistration registrations[] = {
    {"table.load_1m", load},
    {"table.sort_1m", sort},
    {"table.update_sorted_1m", updateSorted},
    {"table.insert_sorted_1m", insertSorted},
    {"table.update_1m", update},
    {"table.repaint", paint},
    {"table.scroll", scroll},
    {"table.flash", flash},
    {"table.frames", frames},
    {"table.filter_1m", filter},
};

} // namespace

} // namespace bench
