#include "window/dealstreampanel.h"

#include <boost/make_shared.hpp>

#include "model/chpfthreaddatamodel.h"
#include "records/fieldids.h"
#include "table/chpfdatatable.h"
#include "window/tableids.h"

namespace terminal {

using namespace refhost;

DealStreamPanel::DealStreamPanel(QWidget *parent)
    : TablePanel(QStringLiteral("逐笔成交"), DealStreamTable, MetaMarketDeal, parent),
      deals(boost::make_shared<KV::CHpfThreadDataModel>(MetaMarketDeal, kdservice::TraderStock))
{
    deals->setFieldColors(true);
    table().setDataModel(deals.get());
    table().setLoadsShown(false); // who stops a stream has gaps in it
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

void DealStreamPanel::take(const FeedPump::Records &records)
{
    deals->addDatas(KV::CHpfThreadDataModel::Records(records.begin(), records.end()));
}

bool DealStreamPanel::isSettled() const
{
    return deals->loadProgress() == 1000;
}

} // namespace terminal
