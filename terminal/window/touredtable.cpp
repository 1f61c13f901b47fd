#include "window/touredtable.h"

#include <algorithm>

#include "feed/marketdata.h"
#include "grid/gridview.h"
#include "kdservice/idata.h"
#include "model/chpfdata.h"
#include "popups/pagingbar.h"
#include "records/fieldids.h"
#include "table/chpfdatatable.h"
#include "window/repeatedrecord.h"
#include "window/tablepanel.h"
#include "window/tourwait.h"
#include "zb/cuiresource.h"

namespace terminal {

namespace {

constexpr int funnelWidth = 16; ///< pixels at 100 %
constexpr int repeatedRows = 50;
constexpr int longestTaking = 30000; ///< milliseconds, far more than it takes

/// The newest record, or one that came so many before it.
boost::shared_ptr<kdservice::IData> recordOf(const KV::CHpfDataTable &table, int before)
{
    const auto rows = table.getAllDatas();
    if (rows.isEmpty())
        return nullptr;
    const int place = rows.size() - 1 - before % std::min(rows.size(), repeatedRows);
    const auto row = boost::dynamic_pointer_cast<KV::CHpfData>(rows[place]);
    return row ? row->getIData() : nullptr;
}

/// Of a stock, whose amount is price by quantity.
bool isOpenOrder(const kdservice::IData &order)
{
    return order.getString(refhost::OrderCode).find('.') != std::string::npos &&
           order.getInt(refhost::OrderStatus) == int(feed::OrderStatus::Accepted);
}

} // namespace

TouredTable::TouredTable(TablePanel &toured, const ZB::CBaseTableSettingParam &plainSetting)
    : tablePanel(toured), view(toured.table().findChild<ZB::GridView *>()), plain(plainSetting),
      users(toured.table().getTableSetting())
{
}

TouredTable::~TouredTable()
{
    tidy();
    table().setTableSetting(users);
}

KV::CHpfDataTable &TouredTable::table() const
{
    return tablePanel.table();
}

void TouredTable::tidy()
{
    table().setPaused(false);
    table().clearFilter();
    table().setTableSetting(plain);
    view->setCurrent(ZB::NoGridRow, -1);
}

void TouredTable::showNewest()
{
    if (auto *bar = table().findChild<ZB::PagingBar *>())
        bar->goToLast();
    tablePanel.showNow();
    view->scrollToRow(view->source()->rowCount() - 1);
    view->scrollToColumn(view->visibleColumns().front());
    view->refreshNow();
}

int TouredTable::column(int field) const
{
    return table().getColumnIdByFileId(field);
}

QPoint TouredTable::header(int field) const
{
    view->scrollToColumn(column(field));
    view->refreshNow();
    return view->headerRect(column(field)).center();
}

/// Opposite to the text of the column.
QPoint TouredTable::funnel(int field) const
{
    const QPoint middle = header(field);
    const QRect rect = view->headerRect(column(field));
    const bool left = view->column(column(field)).alignment & Qt::AlignRight;
    const int inside = ZB::scaled(funnelWidth) / 2 + 1;
    return QPoint(left ? rect.left() + inside : rect.right() - inside, middle.y());
}

QPoint TouredTable::edge(int field) const
{
    const QPoint middle = header(field);
    return QPoint(view->headerRect(column(field)).right(), middle.y());
}

/// The first line on the screen may be cut off, so where there is more than fits, lines are counted behind it.
QPoint TouredTable::cell(int line, int field) const
{
    const qint64 rows = view->source()->rowCount();
    const bool scrolls = rows > view->visibleRowCount();
    const int lines = static_cast<int>(std::min<qint64>(rows, view->visibleRowCount())) - (scrolls ? 1 : 0);
    const int wanted = std::clamp(line < 0 ? lines + line : line, 0, std::max(0, lines - 1)) + (scrolls ? 1 : 0);
    const ZB::GridLook &look = view->look();
    return QPoint(header(field).x(), look.headerHeight + wanted * look.rowHeight + look.rowHeight / 2);
}

void TouredTable::bringNew(int count)
{
    std::vector<boost::shared_ptr<kdservice::IData>> newest;
    for (int before = std::min(count, repeatedRows) - 1; before >= 0; --before)
        if (const auto record = recordOf(table(), before))
            newest.push_back(record);
    FeedPump::Records records;
    for (int i = 0; !newest.empty() && i < count; ++i) {
        const kdservice::IData &record = *newest[static_cast<size_t>(i) % newest.size()];
        records.append(repeatedRecord(record, record.getKey() + "/" + std::to_string(++brought)));
    }
    bring(records);
}

void TouredTable::fillOrder()
{
    for (int before = 0; before < repeatedRows; ++before) {
        const auto order = recordOf(table(), before);
        if (!order || !isOpenOrder(*order))
            continue;
        const auto filled = repeatedRecord(*order, order->getKey());
        const qint64 quantity = order->getLong(refhost::OrderQuantity);
        const double price = order->getDouble(refhost::OrderPrice);
        filled->setData(refhost::OrderFilled, quantity);
        filled->setData(refhost::OrderUnfilled, qint64(0));
        filled->setData(refhost::OrderStatus, int(feed::OrderStatus::Filled));
        filled->setData(refhost::OrderAveragePrice, price);
        filled->setData(refhost::OrderAmount, price * double(quantity));
        return bring({filled});
    }
}

void TouredTable::bring(const FeedPump::Records &records)
{
    tablePanel.take(records);
    waitFor([this] { return tablePanel.isSettled(); }, longestTaking);
    tablePanel.showNow();
}

} // namespace terminal
