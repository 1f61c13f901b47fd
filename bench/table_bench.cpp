#include <QtCore/QCoreApplication>
#include <QtCore/QElapsedTimer>
#include <QtCore/QTimer>
#include <algorithm>
#include <malloc.h>

#include "records/fieldids.h"
#include "tablesetting.h"

namespace bench {

namespace {

constexpr int rounds = 7;
constexpr int stockRounds = 3;
constexpr int manyUpdates = 100000;

void repaint(QTableView &view)
{
    QCoreApplication::processEvents();
    view.viewport()->repaint();
}

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
    double worstMilliseconds() const { return worst; }
    void beat()
    {
        worst = std::max(worst, static_cast<double>(sinceBeat.nsecsElapsed()) * 1e-6);
        sinceBeat.restart();
    }

private:
    QTimer timer;
    QElapsedTimer sinceBeat;
    double worst = 0;
};

std::vector<BenchRow> load(bool quick)
{
    TableSetting &s = TableSetting::instance(quick);
    s.letGo();
    std::vector<double> times, stalls, clearings;
    double bytes = 0;
    for (int round = 0; round < stockRounds; ++round) {
        OurTable fresh;
        Records records = s.records();
        const std::size_t before = allocatedBytes();
        Heart heart;
        times.push_back(secondsOf([&] { fresh.load(std::move(records)); }));
        heart.beat();
        stalls.push_back(heart.worstMilliseconds());
        if (round == 0) // later ones may begin before what the former one left has been let go
            bytes = static_cast<double>(allocatedBytes() - before) / s.count();
        clearings.push_back(secondsOf([&] {
            fresh.table->clear();
            fresh.paint();
        }));
    }
    for (std::vector<double> *each : {&times, &stalls, &clearings})
        std::sort(each->begin(), each->end());
    // Both sides load into a table that stands there already.
    StockTable fresh;
    const double stockTime = stockSecondsOf([&] { fresh.load(s.orders()); });
    return {smallerIsBetter("table.load_1m", s.count(), "s", times[1], stockTime),
            // The stock model takes its rows on the GUI thread, so the window waits for all of it.
            smallerIsBetter("table.load_stall", s.count(), "ms", stalls[1], stockTime * toMilliseconds),
            smallerIsBetter("table.row_bytes", s.count(), "bytes", bytes, 0),
            smallerIsBetter("table.clear_1m", s.count(), "ms", clearings[1] * toMilliseconds, 0)};
}

std::vector<BenchRow> sort(bool quick)
{
    TableSetting &s = TableSetting::instance(quick);
    OurTable &ours = s.ours();
    int order = 0;
    const int ourColumn = ours.column(refhost::OrderPrice);
    const double ourTime = medianOf(rounds, [&] {
        order = 1 - order;
        ours.table->setSortColumns({});
        ours.model->size();
        return secondsOf([&] {
            ours.table->setSortColumns({{ourColumn, order}});
            ours.model->size();
            ours.paint();
        });
    });
    if (!isStockWanted())
        return {smallerIsBetter("table.sort_1m", s.count(), "ms", ourTime * toMilliseconds, 0)};
    StockTable &stock = s.stock();
    const int stockColumn = stock.model->columnOfField(refhost::OrderPrice);
    const double stockTime = medianOf(stockRounds, [&] {
        stock.proxy->sort(-1);
        return secondsOf([&] {
            stock.proxy->sort(stockColumn, Qt::DescendingOrder);
            repaint(*stock.view);
        });
    });
    return {smallerIsBetter("table.sort_1m", s.count(), "ms", ourTime * toMilliseconds, stockTime * toMilliseconds)};
}

std::vector<BenchRow> updateSorted(bool quick)
{
    TableSetting &s = TableSetting::instance(quick);
    s.sortByPrice();
    const double ourTime = medianOf(rounds, [&] {
        const Records changes = asRecords(s.changed(TableSetting::batch, withOtherPrice));
        return secondsOf([&] {
            s.ours().update(changes);
            s.ours().paint();
        });
    });
    const auto changes = s.changed(TableSetting::batch, withOtherPrice);
    const double stockTime = stockSecondsOf([&] {
        for (const OrderPtr &order : changes)
            s.stock().model->update(order);
        repaint(*s.stock().view);
    });
    return {smallerIsBetter("table.update_sorted_1m", TableSetting::batch, "ms", ourTime * toMilliseconds,
                            stockTime * toMilliseconds)};
}

std::vector<BenchRow> insertSorted(bool quick)
{
    TableSetting &s = TableSetting::instance(quick);
    s.sortByPrice();
    const double ourTime = medianOf(rounds, [&] {
        const Records fresh = asRecords(s.added(TableSetting::batch));
        return secondsOf([&] {
            s.ours().update(fresh);
            s.ours().paint();
        });
    });
    const auto fresh = s.added(TableSetting::batch);
    const double stockTime = stockSecondsOf([&] {
        for (const OrderPtr &order : fresh)
            s.stock().model->append(order);
        repaint(*s.stock().view);
    });
    return {smallerIsBetter("table.insert_sorted_1m", TableSetting::batch, "ms", ourTime * toMilliseconds,
                            stockTime * toMilliseconds)};
}

/// No sorted column is touched; a desk's feed hands over what came since the last frame.
std::vector<BenchRow> update(bool quick)
{
    TableSetting &s = TableSetting::instance(quick);
    s.sortByPrice();
    const auto changes = s.changed(manyUpdates, withOtherFill);
    std::vector<Records> frames;
    for (auto first = changes.begin(); first != changes.end(); first += TableSetting::batch)
        frames.emplace_back(first, first + TableSetting::batch);
    const double inBatches = medianOf(rounds, [&] {
        return secondsOf([&] {
            for (const Records &frame : frames)
                s.ours().update(frame);
            s.ours().paint();
        });
    });
    const Records all = asRecords(changes);
    const double oneByOne = medianOf(rounds, [&] {
        return secondsOf([&] {
            s.ours().updateEach(all);
            s.ours().paint();
        });
    });
    const double stockTime = medianOf(stockRounds, [&] {
        return stockSecondsOf([&] {
            for (const OrderPtr &order : changes)
                s.stock().model->update(order);
            repaint(*s.stock().view);
        });
    });
    // Other cases may have added more rows to one table than to the other.
    if (isStockWanted() && s.stock().model->rowCount() == s.ours().model->allSize() &&
        s.stock().model->sumOf(refhost::OrderFilled) !=
            s.ours().model->getStatColumnDouble(s.ours().column(refhost::OrderFilled)))
        qFatal("the two tables do not agree on a sum");
    const double stockRate = stockTime > 0 ? manyUpdates / stockTime : 0;
    return {{"table.update_1m", manyUpdates, "1/s", manyUpdates / inBatches, stockRate, stockTime / inBatches},
            {"table.update_single_1m", manyUpdates, "1/s", manyUpdates / oneByOne, stockRate, stockTime / oneByOne}};
}

std::vector<BenchRow> filter(bool quick)
{
    TableSetting &s = TableSetting::instance(quick);
    // Other cases have added more rows to one table than to the other.
    s.letGo();
    s.sortByPrice();
    OurTable &ours = s.ours();
    const int column = ours.column(refhost::OrderStatus);
    const QSet<QString> values{ours.model->getData(0)->getFilterQString(column)};
    const double ourTime = medianOf(rounds, [&] {
        ours.model->clearFilter();
        ours.model->size();
        return secondsOf([&] {
            QPair<ZB::EFilterType, QSet<QString>> chosen(ZB::FilterExact, values);
            ours.model->filterColumn(column, chosen);
            ours.model->size();
            ours.paint();
        });
    });
    const int passed = ours.model->size();
    const double underFilter = medianOf(rounds, [&] {
        const Records changes = asRecords(s.changed(TableSetting::batch, withOtherPrice));
        return secondsOf([&] {
            ours.update(changes);
            ours.paint();
        });
    });
    ours.model->clearFilter();
    ours.paint();

    // The stock way takes minutes at a million rows and grows with the square of their number: one round.
    double stockTime = 0;
    if (isStockWanted()) {
        StockTable &stock = s.stock();
        stockTime = secondsOf([&] {
            stock.proxy->setValues(stock.model->columnOfField(refhost::OrderStatus), values);
            repaint(*stock.view);
        });
        if (stock.proxy->rowCount() != passed)
            qFatal("the two tables do not agree on the filter: %d and %d rows", passed, stock.proxy->rowCount());
    }
    s.letGo();
    return {smallerIsBetter("table.filter_1m", s.count(), "ms", ourTime * toMilliseconds, stockTime * toMilliseconds),
            smallerIsBetter("table.update_filtered_1m", TableSetting::batch, "ms", underFilter * toMilliseconds, 0)};
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
