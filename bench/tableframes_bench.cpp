#include <QtWidgets/QScrollBar>
#include <algorithm>
#include <string>

#include "framepace.h"
#include "grid/gridview.h"
#include "records/fieldids.h"
#include "tablechecks.h"
#include "tablesetting.h"
#include "zb/numberformat.h"

namespace bench {

namespace {

constexpr int updatesPerSecond = 100000;
constexpr int inSightShare = 100; ///< one update in so many is of a row that is on the screen

/// The records as they are after the updates so far, and those of the next frame: half of them another price, by which
/// the table is sorted, half another fill. At random, but that some are of rows in sight, so that cells flash.
class Feed
{
public:
    explicit Feed(const TableSetting &s) : orders(s.orders()), random(9) {}

    void prepare(int count, const std::vector<int> &inSight)
    {
        changes.clear();
        former.clear();
        for (int i = 0; i < count; ++i) {
            const bool shown = i % inSightShare == 0 && !inSight.empty();
            const std::size_t place =
                shown ? static_cast<std::size_t>(inSight[draw(inSight.size())]) : draw(orders.size());
            OrderPtr &order = orders[place];
            former.push_back(order);
            order = i % 2 == 0 ? withOtherFill(order, random) : withOtherPrice(order, random);
            changes.push_back(order);
        }
    }
    const std::vector<OrderPtr> &next() const { return changes; }
    /// The number of records that pass the filter at present.
    int passing(const std::string &direction) const
    {
        return static_cast<int>(std::count_if(orders.begin(), orders.end(), [&direction](const OrderPtr &order) {
            return order->getString(refhost::OrderDirection) == direction;
        }));
    }

private:
    std::size_t draw(std::size_t size) { return std::uniform_int_distribution<std::size_t>(0, size - 1)(random); }

    std::vector<OrderPtr> orders;
    std::mt19937 random;
    std::vector<OrderPtr> changes;
    std::vector<OrderPtr> former; ///< those that go with these changes: the host lets them go, and not within a frame
};

int placeOf(const kdservice::IData &order)
{
    return order.getInt(refhost::OrderSequence);
}

FrameTimes ourFrames(TableSetting &s, const FramePlan &plan, const std::string &direction)
{
    OurTable &ours = s.ours();
    ours.table->setSortColumns({{ours.column(refhost::OrderPrice), 1}});
    const int column = ours.column(refhost::OrderDirection);
    int chosen = 0;
    while (ours.recordAt(chosen)->getString(refhost::OrderDirection) != direction)
        ++chosen;
    const QString text = ours.model->getData(chosen)->getFilterQString(column);
    QPair<ZB::EFilterType, QSet<QString>> filter(ZB::FilterExact, {text});
    ours.model->filterColumn(column, filter);
    ours.model->size();
    ours.paint();
    Feed feed(s);
    Records changes;
    const auto prepare = [&](int count) {
        std::vector<int> inSight;
        const auto first = static_cast<int>(ours.grid->firstVisibleRow());
        for (int row = first; row < first + ours.grid->visibleRowCount(); ++row)
            inSight.push_back(placeOf(*ours.recordAt(row)));
        feed.prepare(count, inSight);
        changes.assign(feed.next().begin(), feed.next().end());
    };
    const FrameTimes times = pacedFrames(plan, ours.grid, prepare, [&] {
        ours.update(changes);
        ours.table->updateTable();
    });
    checkHeld(ours, changes);
    checkOrder(ours, feed.passing(direction));
    checkPassed(ours, column, text);
    s.letGo();
    return times;
}

/// The filter stands before the rows come, since switching it on takes minutes.
FrameTimes stockFrames(const TableSetting &s, const FramePlan &plan, const std::string &direction)
{
    StockTable stock;
    stock.proxy->setValue(stock.model->columnOfField(refhost::OrderDirection), ZB::sToQs(direction));
    stock.proxy->sort(stock.model->columnOfField(refhost::OrderPrice), Qt::DescendingOrder);
    stock.load(s.orders());
    Feed feed(s);
    const auto prepare = [&](int count) {
        std::vector<int> inSight;
        const int first = std::max(stock.view->rowAt(0), 0);
        for (int i = 0; i < std::min(stock.visibleRows(), stock.proxy->rowCount()); ++i) {
            const QModelIndex source = stock.proxy->mapToSource(stock.proxy->index(first + i, 0));
            inSight.push_back(placeOf(*stock.model->order(source.row())));
        }
        feed.prepare(count, inSight);
    };
    const FrameTimes times = pacedFrames(plan, stock.view->viewport(), prepare, [&] {
        for (const OrderPtr &order : feed.next())
            stock.model->update(order);
    });
    checkOrder(stock, feed.passing(direction));
    return times;
}

/// A desk's day compressed: 100,000 updates a second under a sort and a filter that half of the rows pass.
std::vector<BenchRow> frames(bool quick)
{
    TableSetting &s = TableSetting::instance(quick);
    const std::string direction = s.orders().front()->getString(refhost::OrderDirection);
    const FrameTimes ours = ourFrames(s, {quick ? 5.0 : 60.0, updatesPerSecond}, direction);
    FrameTimes stock;
    if (isStockWanted()) // a second of it tells enough
        stock = stockFrames(s, {1.0, updatesPerSecond}, direction);
    const auto row = [&](const char *name, double FrameTimes::*part) {
        return s.row(name, ours.frames, "ms", ours.*part, stock.*part);
    };
    BenchRow rate = s.row("table.frames_rate", ours.frames, "1/s", ours.updatesPerSecond, stock.updatesPerSecond);
    rate.ratio = rate.stock > 0 ? rate.ours / rate.stock : 0;
    return {row("table.frames_p50", &FrameTimes::median), row("table.frames_p99", &FrameTimes::p99),
            row("table.frames_worst", &FrameTimes::worst), rate};
}

const BenchRegistration registration("table.frames", frames);

} // namespace

} // namespace bench
