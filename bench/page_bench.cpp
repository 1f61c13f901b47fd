#include "benchcase.h"
#include "orderset.h"
#include "stocktable.h"

#include <algorithm>
#include <utility>

#include "kdservice/typemanager.h"
#include "pagemodel/chpfpagedatamodel.h"
#include "records/fieldids.h"
#include "table/chpfdatatable.h"

namespace bench {

namespace {

constexpr int million = 1000000;
constexpr int hundredThousand = 100000;
constexpr int quickShare = 10; ///< --quick measures a tenth

using KV::CHpfPageDataModel;

/// The columns of the benchmarks' orders, as the table's own model numbers them.
struct Columns
{
    Columns()
    {
        int column = 0;
        for (kdservice::FieldDes *field :
             kdservice::TypeManager::instance()->getAllFields({orderMetaId()}, kdservice::TraderStock)) {
            fields.insert(column, field);
            ofField.insert(field->fieldId, column++);
        }
    }
    QMap<int, kdservice::FieldDes *> fields;
    QMap<int, int> ofField;
};

const Columns &columns()
{
    static const Columns made;
    return made;
}

std::unique_ptr<CHpfPageDataModel> makeModel()
{
    auto model = std::make_unique<CHpfPageDataModel>(orderMetaId(), kdservice::TraderStock, true);
    model->setColumnFieldDesMap(columns().fields);
    model->setFieldColumnIDMap(columns().ofField);
    model->setExFilterStatus(0);
    return model;
}

int columnOf(int field)
{
    return columns().ofField.value(field);
}

std::vector<OrderPtr> ordersFor(int count, bool quick)
{
    static std::vector<OrderPtr> made;
    const int wanted = quick ? count / quickShare : count;
    if (static_cast<int>(made.size()) < wanted)
        made = makeOrders(wanted, 3);
    return {made.begin(), made.begin() + wanted};
}

void addAll(CHpfPageDataModel &model, const std::vector<OrderPtr> &orders)
{
    for (const OrderPtr &order : orders)
        model.addData(order);
}

/// Fails loudly unless all are there and, sorted, stand by falling (or rising) price.
void checkAll(const CHpfPageDataModel &model, std::size_t count, bool sorted, bool falling = true)
{
    if (model.size() != static_cast<int>(count))
        qFatal("the model shows %d of %zu records", model.size(), count);
    double last = 0;
    for (int row = 0; sorted && row < model.size(); ++row) {
        const double price = model.getData(row)->getIData()->getDouble(refhost::OrderPrice);
        if (row > 0 && (falling ? price > last : price < last))
            qFatal("row %d is out of order", row);
        last = price;
    }
}

double addSeconds(const std::vector<OrderPtr> &orders, bool sorted)
{
    return medianOf(3, [&] {
        const auto model = makeModel();
        if (sorted)
            model->sortByColumnID(columnOf(refhost::OrderPrice), 1);
        const double seconds = secondsOf([&] { addAll(*model, orders); });
        checkAll(*model, orders.size(), sorted);
        return seconds;
    });
}

/// What stock Qt has for this: a sorted proxy into whose source rows come one by one. No view looks on.
double stockAddSeconds(const std::vector<OrderPtr> &orders)
{
    if (!isStockWanted())
        return 0;
    StockModel source;
    StockProxy proxy;
    proxy.setSourceModel(&source);
    proxy.sort(source.columnOfField(refhost::OrderPrice), Qt::DescendingOrder);
    const double seconds = secondsOf([&] {
        for (const OrderPtr &order : orders)
            source.append(order);
    });
    if (proxy.rowCount() != static_cast<int>(orders.size()))
        qFatal("the stock proxy shows %d of %zu records", proxy.rowCount(), orders.size());
    return seconds;
}

BenchRow rate(const char *name, std::size_t count, double seconds, double stockSeconds = 0)
{
    const auto n = static_cast<double>(count);
    return {name,        static_cast<long long>(count),           "1/s",
            n / seconds, stockSeconds > 0 ? n / stockSeconds : 0, stockSeconds > 0 ? stockSeconds / seconds : 0};
}

std::vector<BenchRow> add(bool quick)
{
    const auto many = ordersFor(million, quick);
    const auto some = ordersFor(hundredThousand, quick);
    return {rate("page.add_unsorted_1m", many.size(), addSeconds(many, false)),
            rate("page.add_sorted_100k", some.size(), addSeconds(some, true), stockAddSeconds(some)),
            rate("page.add_sorted_1m", many.size(), addSeconds(many, true))};
}

std::vector<BenchRow> update(bool quick)
{
    const auto orders = ordersFor(hundredThousand, quick);
    const auto model = makeModel();
    model->sortByColumnID(columnOf(refhost::OrderPrice), 1);
    addAll(*model, orders);
    std::mt19937 random(5);
    const double seconds = medianOf(3, [&] {
        std::vector<OrderPtr> changed;
        for (std::size_t i = 0; i < orders.size(); ++i)
            changed.push_back(withOtherPrice(
                orders[std::uniform_int_distribution<std::size_t>(0, orders.size() - 1)(random)], random));
        const double taken = secondsOf([&] { addAll(*model, changed); });
        checkAll(*model, orders.size(), true);
        return taken;
    });
    return {rate("page.update_sorted_100k", orders.size(), seconds)};
}

std::vector<BenchRow> whole(bool quick)
{
    const auto orders = ordersFor(million, quick);
    const auto model = makeModel();
    addAll(*model, orders);
    const auto count = static_cast<long long>(orders.size());
    const int status = columnOf(refhost::OrderStatus);
    const int direction = columnOf(refhost::OrderDirection);
    const QString wantedStatus = model->getMenuItems(status).value(0);
    const QString wantedDirection = model->getMenuItems(direction).value(0);
    const CHpfPageDataModel::ColumnFilters filters{{status, {ZB::FilterExact, QSet<QString>{wantedStatus}}},
                                                   {direction, {ZB::FilterExact, QSet<QString>{wantedDirection}}}};
    const double filtering = medianOf(5, [&] {
        model->clearFilter(true);
        return secondsOf([&] { model->filterColumn(filters); });
    });
    const auto passing = std::count_if(orders.begin(), orders.end(), [&](const OrderPtr &order) {
        return StockModel::shown(order, refhost::OrderStatus) == wantedStatus &&
               StockModel::shown(order, refhost::OrderDirection) == wantedDirection;
    });
    if (model->size() != passing)
        qFatal("%d records pass the filter and not %d", model->size(), static_cast<int>(passing));
    model->clearFilter(true);
    int order = 0;
    const double sorting = medianOf(5, [&] {
        order = 1 - order;
        model->sortByColumnID(columnOf(refhost::OrderQuantity), 0);
        const double seconds = secondsOf([&] { model->sortByColumnID(columnOf(refhost::OrderPrice), order); });
        checkAll(*model, orders.size(), true, order != 0);
        return seconds;
    });
    return {{"page.filter_1m", count, "ms", filtering * 1e3, 0, 0}, {"page.sort_1m", count, "ms", sorting * 1e3, 0, 0}};
}

/// The longest of the slices in which `step` does its work: what a window waits at most.
template <typename Step>
double longestSlice(Step step)
{
    double longest = 0;
    for (bool done = false; !done;)
        longest = std::max(longest, secondsOf([&] { done = step(); }));
    return longest;
}

/// What a paged table does between the events of its window. Sums are kept, as tables do.
std::vector<BenchRow> stall(bool quick)
{
    constexpr int sliceMilliseconds = 8;
    const auto orders = ordersFor(million, quick);
    const boost::shared_ptr<CHpfPageDataModel> model = makeModel();
    for (const int field : {refhost::OrderQuantity, refhost::OrderFilled, refhost::OrderAmount})
        model->setColumnStatEnable(columnOf(field), true);
    addAll(*model, orders);
    KV::CHpfDataTable table(0, orderMetaId(), nullptr, kdservice::TraderStock, true);
    table.setPageModel(model);
    model->setWorkPerCall(0);
    const auto step = [&] { return model->step(sliceMilliseconds); };
    const int price = columnOf(refhost::OrderPrice);
    int order = 0;
    const double sorting = medianOf(5, [&] {
        model->sortByColumnID(price, order = 1 - order);
        const double longest = longestSlice(step);
        checkAll(*model, orders.size(), true, order != 0);
        return longest;
    });
    const CHpfPageDataModel::ColumnFilters filters{
        {columnOf(refhost::OrderDirection), {ZB::FilterContains, QSet<QString>{QStringLiteral("买")}}}};
    const double filtering = medianOf(5, [&] {
        model->filterColumn(filters);
        const double narrowing = longestSlice(step);
        model->clearFilter(true);
        return std::max(narrowing, longestSlice(step));
    });
    const double listing = medianOf(5, [&] {
        bool anew = true;
        const double gathering = longestSlice(
            [&] { return table.gatherMenuItems(price, std::exchange(anew, false), sliceMilliseconds) >= 1000; });
        return std::max(gathering, secondsOf([&] { table.getMenuItems(price); }));
    });
    const auto count = static_cast<long long>(orders.size());
    return {{"page.sort_stall_1m", count, "ms", sorting * 1e3, 0, 0},
            {"page.filter_stall_1m", count, "ms", filtering * 1e3, 0, 0},
            {"page.menu_stall_1m", count, "ms", listing * 1e3, 0, 0}};
}

const BenchRegistration registrations[] = {
    {"page.add", add},
    {"page.update_sorted_100k", update},
    {"page.whole", whole},
    {"page.stall", stall},
};

} // namespace

} // namespace bench
