#include "window/orderstreampanel.h"

#include "records/fieldids.h"
#include "table/chpfdatatable.h"
#include "window/tableids.h"

namespace terminal {

using namespace refhost;

OrderStreamPanel::OrderStreamPanel(QWidget *parent)
    : TablePanel(QStringLiteral("逐笔委托"), OrderStreamTable, MetaMarketOrder, parent)
{
    table().setEmptyText(QStringLiteral("没有委托"));
    // Wide enough for nine-figure sums: a number that does not fit is not shown at all.
    arrangeColumns({{OrderEntryTime, 90},
                    {OrderCode, 80},
                    {InstrumentName, 76},
                    {OrderDirection, 54},
                    {OrderPrice, 72},
                    {OrderQuantity, 84},
                    {OrderFilled, 84},
                    {OrderCancelled, 84},
                    {OrderStatus, 56},
                    {OrderAveragePrice, 72},
                    {OrderAmount, 92}},
                   3);
}

OrderStreamPanel::~OrderStreamPanel() = default;

} // namespace terminal
