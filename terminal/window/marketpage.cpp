#include "window/marketpage.h"

#include <QtWidgets/QSplitter>
#include <QtWidgets/QVBoxLayout>

#include "kv/cuserconfig.h"
#include "window/dealstreampanel.h"
#include "window/orderstreampanel.h"
#include "zb/cuiresource.h"

namespace terminal {

namespace {

const QString orientationPath = QStringLiteral("page/market/stacked");
const QString splitterPath = QStringLiteral("page/market/splitter");

} // namespace

MarketPage::MarketPage(QWidget *parent)
    : Page(QStringLiteral("market"), QStringLiteral("逐笔"), parent), splitter(new QSplitter(this)),
      orders(new OrderStreamPanel(splitter)), deals(new DealStreamPanel(splitter))
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(splitter);
    splitter->setChildrenCollapsible(false);
    splitter->setHandleWidth(ZB::scaled(4));
    arrange(Qt::Horizontal);
}

MarketPage::~MarketPage() = default;

std::vector<Panel *> MarketPage::panels() const
{
    return {orders, deals};
}

void MarketPage::takeOrders(const FeedPump::Records &records)
{
    orders->take(records);
}

void MarketPage::takeDeals(const FeedPump::Records &records)
{
    deals->take(records);
}

bool MarketPage::isSettled()
{
    return deals->isSettled();
}

void MarketPage::toggleLayout()
{
    arrange(splitter->orientation() == Qt::Horizontal ? Qt::Vertical : Qt::Horizontal);
}

/// Orders have more columns than deals: they get the greater share of a width, and half of a height.
void MarketPage::arrange(Qt::Orientation orientation)
{
    splitter->setOrientation(orientation);
    splitter->setSizes(orientation == Qt::Horizontal ? QList<int>{543, 457} : QList<int>{500, 500});
    const int orderShare = orientation == Qt::Horizontal ? 55 : 50;
    splitter->setStretchFactor(0, orderShare);
    splitter->setStretchFactor(1, 100 - orderShare);
}

void MarketPage::loadState()
{
    const KV::CUserConfig *config = KV::getUserConfig();
    if (!config)
        return;
    arrange(config->value(orientationPath).toBool() ? Qt::Vertical : Qt::Horizontal);
    splitter->restoreState(config->value(splitterPath).toByteArray());
    splitter->setHandleWidth(ZB::scaled(4));
}

void MarketPage::saveState() const
{
    KV::CUserConfig *config = KV::getUserConfig();
    if (!config)
        return;
    config->setValue(orientationPath, splitter->orientation() == Qt::Vertical);
    config->setValue(splitterPath, splitter->saveState());
}

void MarketPage::themeChanged()
{
    splitter->setHandleWidth(ZB::scaled(4));
}

} // namespace terminal
