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
    arrangeColumns({{OrderEntryTime, 84},
                    {OrderCode, 78},
                    {InstrumentName, 70},
                    {OrderDirection, 44},
                    {OrderPrice, 72},
                    {OrderQuantity, 76},
                    {OrderFilled, 76},
                    {OrderCancelled, 76},
                    {OrderStatus, 48},
                    {OrderAveragePrice, 74},
                    {OrderAmount, 90},
                    {OrderUnfilled, 76},
                    {OrderNumber, 76}},
                   3);
}

OrderStreamPanel::~OrderStreamPanel() = default;

} // namespace terminal
