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
    arrangeColumns({{DealTime, 92},
                    {DealCode, 80},
                    {InstrumentName, 68},
                    {DealDirection, 42},
                    {DealPrice, 68},
                    {DealQuantity, 84},
                    {DealAmount, 92},
                    {DealBuyOrder, 68},
                    {DealSellOrder, 68}},
                   3);
}

DealStreamPanel::~DealStreamPanel() = default;

} // namespace terminal
