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
    arrangeColumns({{DealTime, 84},
                    {DealCode, 78},
                    {InstrumentName, 70},
                    {DealDirection, 44},
                    {DealPrice, 72},
                    {DealQuantity, 76},
                    {DealAmount, 90},
                    {DealBuyOrder, 76},
                    {DealSellOrder, 76}},
                   3);
}

DealStreamPanel::~DealStreamPanel() = default;

} // namespace terminal
