#include "window/dealstreampanel.h"

#include "records/fieldids.h"
#include "table/chpfdatatable.h"
#include "window/tableids.h"

namespace terminal {

using namespace refhost;

DealStreamPanel::DealStreamPanel(QWidget *parent)
    : TablePanel(QStringLiteral("逐笔成交"), DealStreamTable, MetaMarketDeal, parent)
{
    table().setEmptyText(QStringLiteral("没有成交"));
    arrangeColumns({{DealTime, 90},
                    {DealCode, 80},
                    {InstrumentName, 76},
                    {DealDirection, 50},
                    {DealPrice, 72},
                    {DealQuantity, 90},
                    {DealAmount, 92},
                    {DealBuyOrder, 76},
                    {DealSellOrder, 76}},
                   3);
}

DealStreamPanel::~DealStreamPanel() = default;

} // namespace terminal
