#include "window/accountpage.h"

#include <QtWidgets/QSplitter>
#include <QtWidgets/QVBoxLayout>

#include "kv/cuserconfig.h"
#include "window/accountfollower.h"
#include "window/fundspanel.h"
#include "window/positionspanel.h"
#include "window/tableids.h"
#include "zb/cuiresource.h"

namespace terminal {

namespace {

const QString orientationPath = QStringLiteral("page/accounts/sidebyside");
const QString splitterPath = QStringLiteral("page/accounts/splitter");

} // namespace

AccountPage::AccountPage(QWidget *parent)
    : Page(QStringLiteral("accounts"), QStringLiteral("账户"), parent), splitter(new QSplitter(Qt::Vertical, this)),
      fundsPanel(new FundsPanel(DemonstrationFundsTable, splitter)),
      positionsPanel(new PositionsPanel(DemonstrationPositionsTable, splitter)),
      follower(new AccountFollower(demonstration, *fundsPanel, *positionsPanel))
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(splitter);
    splitter->setChildrenCollapsible(false);
    splitter->setHandleWidth(ZB::scaled(4));
    splitter->setStretchFactor(0, 28);
    splitter->setStretchFactor(1, 72);
    splitter->setSizes({280, 720});
    positionsPanel->setSellsOnSameDay(true);
    fundsPanel->setRemark(QStringLiteral("演示账户：市场成交按序轮流分给各账户，不计费用"));
}

AccountPage::~AccountPage() = default;

std::vector<Panel *> AccountPage::panels() const
{
    return {fundsPanel, positionsPanel};
}

void AccountPage::takeInstrument(const feed::Instrument &instrument)
{
    demonstration.takeInstrument(instrument);
}

void AccountPage::takeDeal(const feed::Deal &deal)
{
    demonstration.takeDeal(deal);
}

void AccountPage::takeQuote(const feed::QuoteSnapshot &quote)
{
    demonstration.takeQuote(quote);
}

void AccountPage::showNow()
{
    follower->follow();
    Page::showNow();
}

/// Side by side, or one above the other.
void AccountPage::toggleLayout()
{
    splitter->setOrientation(splitter->orientation() == Qt::Vertical ? Qt::Horizontal : Qt::Vertical);
}

void AccountPage::loadState()
{
    const KV::CUserConfig *config = KV::getUserConfig();
    if (!config)
        return;
    splitter->setOrientation(config->value(orientationPath).toBool() ? Qt::Horizontal : Qt::Vertical);
    splitter->restoreState(config->value(splitterPath).toByteArray());
    splitter->setHandleWidth(ZB::scaled(4));
}

void AccountPage::saveState() const
{
    KV::CUserConfig *config = KV::getUserConfig();
    if (!config)
        return;
    config->setValue(orientationPath, splitter->orientation() == Qt::Horizontal);
    config->setValue(splitterPath, splitter->saveState());
}

void AccountPage::themeChanged()
{
    splitter->setHandleWidth(ZB::scaled(4));
}

} // namespace terminal
