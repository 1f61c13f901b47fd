#include <QtCore/QCoreApplication>
#include <algorithm>

#include "records/fieldids.h"
#include "stockrecords.h"
#include "table/cdatatable.h"
#include "tablesetting.h"

namespace bench {

namespace {

constexpr int recordCount = 10000;
constexpr int framesPerSecond = 60;
constexpr int updatesPerFrame = 50000 / framesPerSecond + 1;
constexpr int framesPerSum = framesPerSecond / 10; ///< sums come ten times a second
constexpr int filterRounds = 15;

/// Our table with the records in it, as a panel holds them.
class OurRecords
{
public:
    explicit OurRecords(const std::vector<OrderPtr> &orders) : table(991, orderMetaId(), nullptr)
    {
        table.resize(viewWidth, viewHeight);
        for (int column = 0; column < table.columnCount(); ++column)
            table.setColumnWidth(column, columnWidth);
        table.show();
        QVector<boost::shared_ptr<kdservice::IData>> records;
        for (const OrderPtr &order : orders)
            records.append(order);
        table.updateDatas(records);
        paint();
    }

    void paint()
    {
        table.updateTable();
        QCoreApplication::processEvents();
    }

    KV::CDataTable table;
};

struct Update
{
    OrderPtr order;
    int field;
};

/// What a feed changes in a frame: prices and fills of records drawn at random.
std::vector<Update> draw(std::vector<OrderPtr> &orders, std::mt19937 &random)
{
    std::vector<Update> updates;
    for (int i = 0; i < updatesPerFrame; ++i) {
        OrderPtr &order = orders[std::uniform_int_distribution<std::size_t>(0, orders.size() - 1)(random)];
        const bool isPrice = i % 2 == 0;
        order = isPrice ? withOtherPrice(order, random) : withOtherFill(order, random);
        updates.push_back({order, isPrice ? refhost::OrderPrice : refhost::OrderFilled});
    }
    return updates;
}

/// What frames take, in milliseconds.
struct FrameTimes
{
    double median = 0;
    double p99 = 0; ///< 99 of 100 stay below
};

template <typename Take, typename Sum>
FrameTimes frames(int seconds, std::vector<OrderPtr> orders, Take take, Sum sum)
{
    std::mt19937 random(5);
    std::vector<double> times;
    for (int frame = 0; frame < seconds * framesPerSecond; ++frame) {
        const std::vector<Update> updates = draw(orders, random);
        times.push_back(secondsOf([&] {
            if (frame % framesPerSum == 0)
                sum();
            take(updates);
        }));
    }
    std::sort(times.begin(), times.end());
    return {times[times.size() / 2] * toMilliseconds, times[times.size() * 99 / 100] * toMilliseconds};
}

std::vector<BenchRow> updateFields(bool quick)
{
    const std::vector<OrderPtr> orders = makeOrders(recordCount, 17);
    const int seconds = quick ? 2 : 20;
    const int stockSeconds = 2;
    std::vector<BenchRow> rows;
    for (const bool sorted : {false, true}) {
        OurRecords ours(orders);
        const int column = ours.table.fieldID2columnID(refhost::OrderPrice);
        if (sorted)
            ours.table.setSortColumns({{column, 1}});
        ours.paint();
        const FrameTimes ourTimes = frames(
            seconds, orders,
            [&](const std::vector<Update> &updates) {
                for (const Update &update : updates)
                    ours.table.updateDataField(update.order, update.field, false);
                ours.paint();
            },
            [&] { ours.table.onTimer(); });
        FrameTimes stockTimes;
        if (isStockWanted()) {
            StockRecords stock(orders);
            if (sorted)
                stock.sortBy(stock.columnOfField(refhost::OrderPrice), Qt::DescendingOrder);
            stockTimes = frames(
                stockSeconds, orders,
                [&](const std::vector<Update> &updates) {
                    for (const Update &update : updates)
                        stock.updateField(update.order, update.field);
                    stock.paint();
                },
                [&] { stock.sums(); });
        }
        const char *const names[][2] = {{"record.update_10k", "record.update_10k_p50"},
                                        {"record.update_sorted_10k", "record.update_sorted_p50"}};
        rows.push_back(smallerIsBetter(names[sorted][0], recordCount, "ms p99", ourTimes.p99, stockTimes.p99));
        rows.push_back(smallerIsBetter(names[sorted][1], recordCount, "ms", ourTimes.median, stockTimes.median));
    }
    return rows;
}

std::vector<BenchRow> refilter(bool)
{
    const std::vector<OrderPtr> orders = makeOrders(recordCount, 17);
    OurRecords ours(orders);
    const int column = ours.table.fieldID2columnID(refhost::OrderStatus);
    const QSet<QString> chosen{ours.table.cellText(ours.table.rows().first(), column)};
    const auto filter = [&](QSet<QString> values) {
        ours.table.onFilterTrigger(column, ZB::FilterExact, values);
        ours.paint();
    };
    std::vector<double> narrower, wider;
    for (int round = 0; round < filterRounds; ++round) {
        narrower.push_back(secondsOf([&] { filter(chosen); }));
        wider.push_back(secondsOf([&] { filter({}); }));
    }
    filter(chosen);

    double stockNarrower = 0;
    double stockWider = 0;
    if (isStockWanted()) {
        StockRecords stock(orders);
        const int stockColumn = stock.columnOfField(refhost::OrderStatus);
        const auto stockFilter = [&](const QSet<QString> &values) {
            stock.filter(stockColumn, values);
            stock.paint();
        };
        stockNarrower = secondsOf([&] { stockFilter(chosen); });
        if (stock.shownRows() != ours.table.rowCount())
            qFatal("the tables do not agree on the filter: %d and %d rows", ours.table.rowCount(), stock.shownRows());
        stockWider = secondsOf([&] { stockFilter({}); });
    }
    const auto median = [](std::vector<double> &times) {
        std::sort(times.begin(), times.end());
        return times[times.size() / 2] * toMilliseconds;
    };
    return {smallerIsBetter("record.refilter_10k", recordCount, "ms", median(narrower), stockNarrower * toMilliseconds),
            smallerIsBetter("record.unfilter_10k", recordCount, "ms", median(wider), stockWider * toMilliseconds)};
}

const BenchRegistration registrations[] = {
    {"record.update_10k", updateFields},
    {"record.refilter_10k", refilter},
};

} // namespace

} // namespace bench
