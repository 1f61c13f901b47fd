#include <QtCore/QCoreApplication>
#include <QtCore/QElapsedTimer>
#include <QtCore/QTimer>
#include <algorithm>
#include <functional>
#include <malloc.h>
#include <utility>

#include "records/fieldids.h"
#include "tablechecks.h"
#include "tablesetting.h"
#include "zb/numberformat.h"

namespace bench {

namespace {

constexpr int rounds = 7;
constexpr int stockRounds = 3;
constexpr int loadRounds = 3;
constexpr int manyUpdates = 100000;

Records asRecords(const std::vector<OrderPtr> &orders)
{
    return Records(orders.begin(), orders.end());
}

std::size_t allocatedBytes()
{
    const auto info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

/// The longest time in which the window could not answer while this is there.
class Heart
{
public:
    Heart()
    {
        QObject::connect(&timer, &QTimer::timeout, [this] { beat(); });
        timer.start(0);
        sinceBeat.start();
    }
    double worstSeconds() const { return worst; }
    void beat()
    {
        worst = std::max(worst, static_cast<double>(sinceBeat.nsecsElapsed()) * 1e-9);
        sinceBeat.restart();
    }

private:
    QTimer timer;
    QElapsedTimer sinceBeat;
    double worst = 0;
};

/// Seconds of one round.
struct Load
{
    double loading = 0;
    double stall = 0; ///< the longest while loading
    double clearing = 0;
};

/// Both sides load into a table that stands there already, and are handed a list that has been made before.
template <typename Table, typename List, typename Clear>
Load loadAndClear(Table &table, List records, const std::function<void()> &checkLoaded, Clear clear)
{
    Load load;
    const QImage empty = table.picture();
    {
        Heart heart;
        load.loading = secondsOf([&] { table.load(std::move(records)); });
        heart.beat();
        load.stall = heart.worstSeconds();
    }
    const QImage full = table.picture();
    checkRepainted(empty, full, "a load");
    checkLoaded();
    load.clearing = secondsOf([&] {
        clear();
        table.paint();
    });
    checkRepainted(full, table.picture(), "a clear");
    return load;
}

/// bytes: what a row takes beside its record.
Load loadOurs(const TableSetting &s, double *bytes)
{
    OurTable fresh;
    const std::size_t before = allocatedBytes();
    const auto check = [&] {
        checkHeld(fresh, s.sample());
        if (!bytes)
            return;
        QElapsedTimer waiting; // until the strand has let go of the list that it was given
        for (waiting.start(); waiting.elapsed() < 300;)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        *bytes = static_cast<double>(allocatedBytes() - before) / s.count();
    };
    const Load load = loadAndClear(fresh, s.records(), check, [&] { fresh.table->clear(); });
    if (fresh.model->allSize() != 0)
        qFatal("our table is not empty after it was cleared");
    return load;
}

Load loadStock(const TableSetting &s)
{
    StockTable fresh;
    const auto check = [&] {
        if (fresh.proxy->rowCount() != s.count())
            qFatal("the stock table has %d rows", fresh.proxy->rowCount());
    };
    return loadAndClear(fresh, s.orders(), check, [&] { fresh.model->setOrders({}); });
}

Load middleOf(const std::vector<Load> &loads)
{
    const auto median = [&loads](double Load::*part) {
        std::vector<double> values;
        for (const Load &load : loads)
            values.push_back(load.*part);
        std::sort(values.begin(), values.end());
        return values.empty() ? 0 : values[values.size() / 2];
    };
    return {median(&Load::loading), median(&Load::stall), median(&Load::clearing)};
}

std::vector<BenchRow> load(bool quick)
{
    TableSetting &s = TableSetting::instance(quick);
    s.letGo();
    double bytes = 0;
    std::vector<Load> ourLoads, stockLoads;
    for (int round = 0; round < loadRounds; ++round) {
        // What later ones begin with may not have been let go yet.
        ourLoads.push_back(loadOurs(s, round == 0 ? &bytes : nullptr));
        if (isStockWanted())
            stockLoads.push_back(loadStock(s));
    }
    const Load ours = middleOf(ourLoads);
    const Load stock = middleOf(stockLoads);
    return {s.row("table.load_1m", s.count(), "s", ours.loading, stock.loading),
            s.milliseconds("table.load_stall", s.count(), ours.stall, stock.stall),
            s.row("table.row_bytes", s.count(), "bytes", bytes, 0),
            s.milliseconds("table.clear_1m", s.count(), ours.clearing, stock.clearing)};
}

std::vector<BenchRow> sort(bool quick)
{
    TableSetting &s = TableSetting::instance(quick);
    OurTable &ours = s.ours();
    bool falling = false;
    const int ourColumn = ours.column(refhost::OrderPrice);
    const double ourTime = medianOf(rounds, [&] {
        falling = !falling;
        ours.table->setSortColumns({});
        ours.model->size();
        return secondsOf([&] {
            ours.table->setSortColumns({{ourColumn, falling ? 1 : 0}});
            ours.model->size();
            ours.paint();
        });
    });
    checkOrder(ours, s.count(), falling);
    if (!isStockWanted())
        return {s.milliseconds("table.sort_1m", s.count(), ourTime, 0)};
    StockTable &stock = s.stock();
    const int stockColumn = stock.model->columnOfField(refhost::OrderPrice);
    falling = false;
    const double stockTime = medianOf(stockRounds, [&] {
        falling = !falling;
        stock.proxy->sort(-1);
        return secondsOf([&] {
            stock.proxy->sort(stockColumn, falling ? Qt::DescendingOrder : Qt::AscendingOrder);
            stock.paint();
        });
    });
    checkOrder(stock, s.count(), falling);
    return {s.milliseconds("table.sort_1m", s.count(), ourTime, stockTime)};
}

std::vector<BenchRow> updateSorted(bool quick)
{
    TableSetting &s = TableSetting::instance(quick);
    s.sortByPrice();
    Records last;
    const double ourTime = medianOf(rounds, [&] {
        last = asRecords(s.changed(TableSetting::batch, withOtherPrice));
        return secondsOf([&] {
            s.ours().update(last);
            s.ours().paint();
        });
    });
    checkHeld(s.ours(), last);
    checkOrder(s.ours(), s.count());
    double stockTime = 0;
    if (isStockWanted()) {
        const auto changes = s.changed(TableSetting::batch, withOtherPrice);
        stockTime = secondsOf([&] {
            for (const OrderPtr &order : changes)
                s.stock().model->update(order);
            s.stock().paint();
        });
        checkOrder(s.stock(), s.count());
    }
    return {s.milliseconds("table.update_sorted_1m", TableSetting::batch, ourTime, stockTime)};
}

std::vector<BenchRow> insertSorted(bool quick)
{
    TableSetting &s = TableSetting::instance(quick);
    s.sortByPrice();
    Records last;
    const double ourTime = medianOf(rounds, [&] {
        last = asRecords(s.added(TableSetting::batch));
        return secondsOf([&] {
            s.ours().update(last);
            s.ours().paint();
        });
    });
    checkHeld(s.ours(), last);
    checkOrder(s.ours(), s.count() + rounds * TableSetting::batch);
    double stockTime = 0;
    if (isStockWanted()) {
        const auto fresh = s.added(TableSetting::batch);
        stockTime = secondsOf([&] {
            for (const OrderPtr &order : fresh)
                s.stock().model->append(order);
            s.stock().paint();
        });
        checkOrder(s.stock(), s.count() + TableSetting::batch);
    }
    s.letGo(); // one has got more rows than the other
    return {s.milliseconds("table.insert_sorted_1m", TableSetting::batch, ourTime, stockTime)};
}

/// What a feed hands over, in frames.
std::vector<Records> inFrames(const std::vector<OrderPtr> &changes)
{
    std::vector<Records> frames;
    for (auto first = changes.begin(); first != changes.end(); first += TableSetting::batch)
        frames.emplace_back(first, first + TableSetting::batch);
    return frames;
}

/// No sorted column is touched. Every round has values of its own, so that texts and sums change as they do all day.
/// The records of the round before go outside of the clock: they are the host's.
std::vector<BenchRow> update(bool quick)
{
    TableSetting &s = TableSetting::instance(quick);
    s.sortByPrice();
    const std::vector<std::size_t> drawn = s.drawn(manyUpdates);
    std::vector<OrderPtr> present, former;
    const auto changes = [&]() -> const std::vector<OrderPtr> & {
        former = std::exchange(present, s.changed(drawn, withOtherFill));
        return present;
    };
    const double inBatches = medianOf(rounds, [&] {
        const std::vector<Records> frames = inFrames(changes());
        return secondsOf([&] {
            for (const Records &frame : frames)
                s.ours().update(frame);
            s.ours().paint();
        });
    });
    const double oneByOne = medianOf(rounds, [&] {
        const Records all = asRecords(changes());
        return secondsOf([&] {
            s.ours().updateEach(all);
            s.ours().paint();
        });
    });
    const auto last = changes();
    s.ours().update(asRecords(last));
    checkHeld(s.ours(), asRecords(last));
    double stockRate = 0;
    if (isStockWanted()) {
        StockTable &stock = s.stock();
        const auto take = [&stock](const std::vector<OrderPtr> &orders) {
            for (const OrderPtr &order : orders)
                stock.model->update(order);
            stock.paint();
        };
        stockRate = manyUpdates / medianOf(stockRounds, [&] {
                        const auto &orders = changes();
                        return secondsOf([&] { take(orders); });
                    });
        take(last);
        const int column = s.ours().column(refhost::OrderFilled);
        if (stock.model->sumOf(refhost::OrderFilled) != s.ours().model->getStatColumnDouble(column))
            qFatal("the two tables do not agree on a sum");
    }
    const auto row = [&](const char *name, double seconds) {
        const double rate = manyUpdates / seconds;
        return BenchRow{name, manyUpdates, "1/s", rate, stockRate, stockRate > 0 ? rate / stockRate : 0, s.count()};
    };
    return {row("table.update_1m", inBatches), row("table.update_single_1m", oneByOne)};
}

std::vector<BenchRow> filter(bool quick)
{
    TableSetting &s = TableSetting::instance(quick);
    s.sortByPrice();
    OurTable &ours = s.ours();
    const int column = ours.column(refhost::OrderStatus);
    const QString chosenText = ours.model->getData(0)->getFilterQString(column);
    const QString chosen = ZB::sToQs(ours.recordAt(0)->getString(refhost::OrderStatus));
    const double ourTime = medianOf(rounds, [&] {
        ours.model->clearFilter();
        ours.model->size();
        return secondsOf([&] {
            QPair<ZB::EFilterType, QSet<QString>> values(ZB::FilterExact, {chosenText});
            ours.model->filterColumn(column, values);
            ours.model->size();
            ours.paint();
        });
    });
    const int passed = ours.model->size();
    if (passed < s.count() / 12 || passed > s.count() / 8)
        qFatal("%d rows pass, which is not one in ten", passed);
    checkOrder(ours, passed);
    checkPassed(ours, column, chosenText);
    Records last;
    const double underFilter = medianOf(rounds, [&] {
        last = asRecords(s.changed(TableSetting::batch, withOtherPrice));
        return secondsOf([&] {
            ours.update(last);
            ours.paint();
        });
    });
    checkHeld(ours, last);
    checkOrder(ours, passed);

    // The stock way takes minutes at a million rows and grows with the square of their number: one round.
    double stockTime = 0;
    if (isStockWanted()) {
        StockTable &stock = s.stock();
        stockTime = secondsOf([&] {
            stock.proxy->setValue(stock.model->columnOfField(refhost::OrderStatus), chosen);
            stock.paint();
        });
        checkOrder(stock, passed);
    }
    s.letGo();
    return {s.milliseconds("table.filter_1m", s.count(), ourTime, stockTime),
            s.milliseconds("table.update_filtered_1m", TableSetting::batch, underFilter, 0)};
}

const BenchRegistration registrations[] = {
    {"table.load_1m", load},
    {"table.sort_1m", sort},
    {"table.update_sorted_1m", updateSorted},
    {"table.insert_sorted_1m", insertSorted},
    {"table.update_1m", update},
    {"table.filter_1m", filter},
};

} // namespace

} // namespace bench
