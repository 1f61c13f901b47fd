#include "tablesetting.h"

#include "records/fieldids.h"

namespace bench {

namespace {

constexpr int fullCount = 1000000;
constexpr int quickCount = 50000;

} // namespace

TableSetting &TableSetting::instance(bool quick)
{
    static TableSetting *const made = [quick] {
        auto *const setting = new TableSetting(quick ? quickCount : fullCount);
        atBenchEnd([setting] { delete setting; });
        return setting;
    }();
    return *made;
}

TableSetting::TableSetting(int rows) : rowCount(rows), random(7), list(makeOrders(rows, 1)) {}

OurTable &TableSetting::ours()
{
    if (!ourTable) {
        ourTable = std::make_unique<OurTable>();
        ourTable->load(records());
    }
    return *ourTable;
}

StockTable &TableSetting::stock()
{
    if (!stockTable) {
        stockTable = std::make_unique<StockTable>();
        stockTable->load(list);
    }
    return *stockTable;
}

void TableSetting::letGo()
{
    ourTable.reset();
    stockTable.reset();
}

void TableSetting::sortByPrice()
{
    constexpr int falling = 1;
    ours().table->setSortColumns({{ours().column(refhost::OrderPrice), falling}});
    ours().model->size();
    ours().paint();
    if (isStockWanted())
        stock().proxy->sort(stock().model->columnOfField(refhost::OrderPrice), Qt::DescendingOrder);
}

std::vector<std::size_t> TableSetting::drawn(int howMany)
{
    std::uniform_int_distribution<std::size_t> place(0, list.size() - 1);
    std::vector<std::size_t> places;
    for (int i = 0; i < howMany; ++i)
        places.push_back(place(random));
    return places;
}

std::vector<OrderPtr> TableSetting::changed(const std::vector<std::size_t> &places, Change change)
{
    std::vector<OrderPtr> records;
    for (const std::size_t place : places)
        records.push_back(change(list[place], random));
    return records;
}

std::vector<OrderPtr> TableSetting::changed(int howMany, Change change)
{
    return changed(drawn(howMany), change);
}

Records TableSetting::sample() const
{
    constexpr std::size_t step = 97;
    Records some;
    for (std::size_t at = 0; at < list.size(); at += step)
        some.push_back(list[at]);
    some.push_back(list.back());
    return some;
}

std::vector<OrderPtr> TableSetting::added(int howMany)
{
    std::vector<OrderPtr> records;
    for (int i = 0; i < howMany; ++i)
        records.push_back(makeOrder(rowCount + nextNew++, random));
    return records;
}

BenchRow TableSetting::row(const char *name, long long n, const char *unit, double ours, double stock) const
{
    BenchRow made = smallerIsBetter(name, n, unit, ours, stock);
    made.records = rowCount;
    return made;
}

BenchRow TableSetting::milliseconds(const char *name, long long n, double ourSeconds, double stockSeconds) const
{
    return row(name, n, "ms", ourSeconds * toMilliseconds, stockSeconds * toMilliseconds);
}

BenchRow smallerIsBetter(const char *name, long long n, const char *unit, double ours, double stock)
{
    return {name, n, unit, ours, stock, stock > 0 && ours > 0 ? stock / ours : 0};
}

} // namespace bench
