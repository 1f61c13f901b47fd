#include <QtCore/QCoreApplication>
#include <algorithm>

#include "framepace.h"
#include "grid/gridview.h"
#include "records/fieldids.h"
#include "stockrecords.h"
#include "stocktable.h"
#include "table/cdatatable.h"
#include "tablesetting.h"

namespace bench {

namespace {

constexpr int recordCount = 10000;
constexpr int updatesPerSecond = 50000;
constexpr int filterRounds = 15;
constexpr int stockFilterRounds = 7;

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

/// A feed: prices and fills of records drawn at random.
class Feed
{
public:
    explicit Feed(std::vector<OrderPtr> list) : orders(std::move(list)), random(5) {}

    void prepare(int count)
    {
        updates.clear();
        former.clear();
        for (int i = 0; i < count; ++i) {
            OrderPtr &order = orders[std::uniform_int_distribution<std::size_t>(0, orders.size() - 1)(random)];
            const bool isPrice = i % 2 == 0;
            former.push_back(order);
            order = isPrice ? withOtherPrice(order, random) : withOtherFill(order, random);
            updates.push_back({order, isPrice ? refhost::OrderPrice : refhost::OrderFilled});
        }
    }
    const QVector<KV::CDataTable::FieldChange> &next() const { return updates; }
    /// The records as they are after all updates.
    const std::vector<OrderPtr> &present() const { return orders; }

private:
    std::vector<OrderPtr> orders;
    std::mt19937 random;
    QVector<KV::CDataTable::FieldChange> updates;
    std::vector<OrderPtr> former; ///< those that go with these updates: the host lets them go, and not within a frame
};

/// Fails loudly unless a table shows the price and the fill of each record. textOf: what the table shows, by the
/// record's place and field.
template <typename TextOf>
void checkTexts(const std::vector<OrderPtr> &orders, const char *whose, TextOf textOf)
{
    for (std::size_t place = 0; place < orders.size(); ++place)
        for (const int field : {refhost::OrderPrice, refhost::OrderFilled}) {
            const QString wanted = StockModel::shown(orders[place], field);
            if (const QString shown = textOf(place, field); shown != wanted)
                qFatal("%s table shows %s and not %s in record %zu", whose, qUtf8Printable(shown),
                       qUtf8Printable(wanted), place);
        }
}

/// Fails loudly unless prices fall from row to row. priceOf: by the number of the row.
template <typename PriceOf>
void checkFalling(const char *whose, PriceOf priceOf)
{
    for (int row = 1; row < recordCount; ++row)
        if (priceOf(row) > priceOf(row - 1))
            qFatal("row %d of %s table is out of order", row, whose);
}

/// How the table is asked to take the changes of a frame.
enum class Way
{
    AtOnce,
    OneByOne,
    AtOnceSorted
};

FrameTimes ourFrames(const std::vector<OrderPtr> &orders, Way way, double seconds)
{
    OurRecords ours(orders);
    const bool sorted = way == Way::AtOnceSorted;
    const int price = ours.table.fieldID2columnID(refhost::OrderPrice);
    if (sorted)
        ours.table.setSortColumns({{price, 1}});
    ours.paint();
    Feed feed(orders);
    const FrameTimes times = pacedFrames(
        {seconds, updatesPerSecond}, ours.table.findChild<ZB::GridView *>(), [&](int count) { feed.prepare(count); },
        [&] {
            if (way == Way::OneByOne)
                for (const auto &update : feed.next())
                    ours.table.updateDataField(update.record, update.field, false);
            else
                ours.table.updateDataFields(feed.next());
            ours.table.updateTable();
        });
    checkTexts(feed.present(), "our", [&](std::size_t place, int field) {
        return ours.table.cellText(ours.table.keyToRowID(orders[place]->getKey()), ours.table.fieldID2columnID(field));
    });
    const QVector<int> rows = ours.table.rows();
    if (sorted)
        checkFalling("our", [&](int row) { return ours.table.getData(rows[row])->getDouble(refhost::OrderPrice); });
    return times;
}

FrameTimes stockFrames(const std::vector<OrderPtr> &orders, bool sorted, double seconds)
{
    StockRecords stock(orders);
    if (sorted)
        stock.sortBy(stock.columnOfField(refhost::OrderPrice), Qt::DescendingOrder);
    Feed feed(orders);
    const FrameTimes times = pacedFrames(
        {seconds, updatesPerSecond}, stock.viewport(), [&](int count) { feed.prepare(count); },
        [&] {
            for (const auto &update : feed.next())
                stock.updateField(update.record, update.field);
            stock.fade();
        });
    checkTexts(feed.present(), "the stock", [&](std::size_t place, int field) { return stock.text(place, field); });
    if (sorted)
        checkFalling("the stock", [&](int row) { return stock.numberAt(row, refhost::OrderPrice); });
    return times;
}

std::vector<BenchRow> updateFields(bool quick)
{
    const std::vector<OrderPtr> orders = makeOrders(recordCount, 17);
    std::vector<BenchRow> rows;
    FrameTimes stock; // which knows one way only: it is measured once for both ways without a sort
    const auto measure = [&](Way way, const char *slowest, const char *median) {
        const FrameTimes ours = ourFrames(orders, way, quick ? 3 : 20);
        if (isStockWanted() && way != Way::OneByOne)
            stock = stockFrames(orders, way == Way::AtOnceSorted, quick ? 3 : 5);
        rows.push_back(smallerIsBetter(slowest, ours.frames, "ms p99", ours.p99, stock.p99));
        rows.push_back(smallerIsBetter(median, ours.frames, "ms", ours.median, stock.median));
    };
    measure(Way::AtOnce, "record.update_10k", "record.update_10k_p50");
    measure(Way::OneByOne, "record.update_single_10k", "record.update_single_p50");
    measure(Way::AtOnceSorted, "record.update_sorted_10k", "record.update_sorted_p50");
    for (BenchRow &row : rows)
        row.records = recordCount;
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

    std::vector<double> stockNarrower, stockWider;
    if (isStockWanted()) {
        StockRecords stock(orders);
        const int stockColumn = stock.columnOfField(refhost::OrderStatus);
        const auto stockFilter = [&](const QSet<QString> &values) {
            stock.filter(stockColumn, values);
            stock.paint();
        };
        for (int round = 0; round < stockFilterRounds; ++round) {
            stockNarrower.push_back(secondsOf([&] { stockFilter(chosen); }));
            if (stock.shownRows() != ours.table.rowCount())
                qFatal("the tables do not agree on the filter: %d and %d rows", ours.table.rowCount(),
                       stock.shownRows());
            stockWider.push_back(secondsOf([&] { stockFilter({}); }));
        }
    }
    const auto median = [](std::vector<double> &times) {
        std::sort(times.begin(), times.end());
        return times.empty() ? 0 : times[times.size() / 2] * toMilliseconds;
    };
    return {smallerIsBetter("record.refilter_10k", recordCount, "ms", median(narrower), median(stockNarrower)),
            smallerIsBetter("record.unfilter_10k", recordCount, "ms", median(wider), median(stockWider))};
}

const BenchRegistration registrations[] = {
    {"record.update_10k", updateFields},
    {"record.refilter_10k", refilter},
};

} // namespace

} // namespace bench
