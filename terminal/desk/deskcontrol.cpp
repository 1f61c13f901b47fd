#include "desk/deskcontrol.h"

#include <QtCore/QPointer>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMenu>
#include <QtWidgets/QShortcut>

#include "desk/confirmbox.h"
#include "desk/historypanel.h"
#include "desk/limitsbox.h"
#include "desk/owndealspanel.h"
#include "desk/ownpositionspanel.h"
#include "desk/tradedesk.h"
#include "feed/instrumentrules.h"
#include "order/cquotespriceslist.h"
#include "window/accountfollower.h"
#include "window/barbutton.h"
#include "window/fundspanel.h"
#include "window/ladderpanel.h"
#include "window/tableids.h"
#include "window/ticketform.h"
#include "window/tradepage.h"

namespace terminal {

namespace {

using Command = OwnOrdersPanel::Command;

constexpr int ladderCancel = 1243;

} // namespace

DeskControl::DeskControl(TradeDesk &tradeDesk, const FeedPump &pump, TradePage &tradePage, TicketForm &ticketForm)
    : QObject(&tradePage), desk(tradeDesk), page(tradePage), guard(tradeDesk, pump), ticket(ticketForm),
      present(DeskSettings::load()), makeSound([](bool) { QApplication::beep(); })
{
    addPanels(page);
    addKeys(page);
    joinDesk();
    joinPage();
}

DeskControl::~DeskControl() = default;

void DeskControl::addPanels(TradePage &owner)
{
    ordersPanel = new OwnOrdersPanel;
    dealsPanel = new OwnDealsPanel;
    positionsPanel = new OwnPositionsPanel;
    fundsPanel = new FundsPanel(OwnFundsTable);
    orderHistoryPanel = new HistoryPanel(trading::HistoryQuery::Kind::Orders);
    dealHistoryPanel = new HistoryPanel(trading::HistoryQuery::Kind::Deals);
    for (Panel *panel : {static_cast<Panel *>(ordersPanel), static_cast<Panel *>(dealsPanel),
                         static_cast<Panel *>(positionsPanel), static_cast<Panel *>(fundsPanel),
                         static_cast<Panel *>(orderHistoryPanel), static_cast<Panel *>(dealHistoryPanel)})
        owner.addBottomPanel(panel, panel->caption());
    new AccountFollower(desk, *fundsPanel, *positionsPanel); // belongs to the panel of funds
}

void DeskControl::addKeys(TradePage &owner)
{
    const auto add = [&](int key, Command wanted) {
        auto *shortcut = new QShortcut(key, &owner);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        shortcut->setAutoRepeat(false);
        connect(shortcut, &QShortcut::activated, this, [this, wanted] { command(wanted); });
    };
    add(Qt::Key_F7, Command::CancelBuys);
    add(Qt::Key_F8, Command::CancelSells);
    add(Qt::Key_F9, Command::CancelAll);
    add(Qt::Key_F10, Command::Reprice);
    add(Qt::Key_F12, Command::CloseAll);
}

void DeskControl::joinDesk()
{
    connect(&desk, &TradeDesk::ordersChanged, ordersPanel, &TablePanel::take);
    connect(&desk, &TradeDesk::dealsMade, dealsPanel, &TablePanel::take);
    connect(&desk, &TradeDesk::ordersChanged, this, &DeskControl::refreshLadder);
    for (OwnRecordsPanel *panel :
         {static_cast<OwnRecordsPanel *>(ordersPanel), static_cast<OwnRecordsPanel *>(dealsPanel)})
        connect(&desk, &TradeDesk::dayBegan, panel, &OwnRecordsPanel::beginDay);
    connect(&desk, &TradeDesk::storageProblemChanged, ordersPanel, &OwnRecordsPanel::say);
    connect(&desk, &TradeDesk::filled, this, [this] {
        if (present.sounds)
            makeSound(true);
    });
    connect(&desk, &TradeDesk::rejected, this, [this](const trading::PaperOrder &order) {
        ordersPanel->say(QStringLiteral("委托 %1 废单：%2").arg(order.id).arg(QString::fromStdString(order.remark)));
        if (present.sounds)
            makeSound(false);
    });
}

void DeskControl::joinPage()
{
    ticket.setSender([this](const OrderDraft &draft) { return send(draft); });
    ticket.setFundsSource([this](const OrderDraft &draft) { return ticketorders::funds(draft, desk); });
    connect(&page, &TradePage::ladderClicked, this, [this](int event, int level, int side, const QString &code) {
        if (event == ladderCancel)
            cancelInLadder(level, side, code);
    });
    connect(&page, &TradePage::currentCodeChanged, this, &DeskControl::refreshLadder);
    connect(ordersPanel, &OwnRecordsPanel::activated, this, &DeskControl::cancel);
    connect(ordersPanel, &OwnOrdersPanel::commanded, this, &DeskControl::command);
    connect(&ordersPanel->settingsButton(), &BarButton::clicked, this, &DeskControl::openSettings);
    connect(positionsPanel, &OwnPositionsPanel::activated, this, &DeskControl::tradePosition);
}

void DeskControl::openHistory(const QString &path)
{
    orderHistoryPanel->open(path);
    dealHistoryPanel->open(path);
}

void DeskControl::setSettings(const DeskSettings &settings)
{
    present = settings;
    present.save();
}

/// What is wrong is said before anything is asked, and judged once more when it goes out: the market goes on while the
/// user thinks.
QString DeskControl::send(const OrderDraft &draft)
{
    const ticketorders::Made made = ticketorders::fromDraft(draft, desk);
    if (made.requests.empty())
        return made.problem;
    if (const QString refusal = guard.refusal(made.requests, present); !refusal.isEmpty())
        return refusal;
    const QPointer<DeskControl> self(this);
    if (!isWanted(made.requests) || !self)
        return QStringLiteral("已取消，没有委托");
    return desk.send(made.requests);
}

/// Asks the user where he wants to be asked, and where the market is not heard.
bool DeskControl::isWanted(const std::vector<trading::OrderRequest> &requests)
{
    const QString warning = guard.warning(requests);
    const QString question = guard.summary(requests);
    if (!warning.isEmpty())
        return askToConfirm(&page, QStringLiteral("行情提醒"), warning + QStringLiteral("\n\n") + question,
                            QStringLiteral("仍然委托"));
    return !present.confirms || askToConfirm(&page, QStringLiteral("确认委托"), question, QStringLiteral("委托"));
}

void DeskControl::command(Command wanted)
{
    switch (wanted) {
    case Command::CancelBuys:
        return cancelAll(feed::Side::Buy);
    case Command::CancelSells:
        return cancelAll(feed::Side::Sell);
    case Command::CancelAll:
        return cancelAll({});
    case Command::Reprice:
        return repriceCurrent();
    case Command::CloseAll:
        return closeAll();
    }
}

void DeskControl::cancel(qint64 order)
{
    const QString refusal = desk.cancel(order);
    ordersPanel->say(refusal.isEmpty() ? QStringLiteral("已撤委托 %1").arg(order) : refusal);
}

void DeskControl::cancelAll(const std::optional<feed::Side> &side)
{
    QString refusal;
    const int cancelled = desk.cancelAll({{}, side, 0}, refusal);
    if (cancelled == 0 && refusal.isEmpty())
        refusal = QStringLiteral("没有可撤的委托");
    ordersPanel->say(refusal.isEmpty() ? QStringLiteral("已撤 %1 笔").arg(cancelled) : refusal);
}

/// A level's button withdraws what stands at its price, the two large ones a whole side.
void DeskControl::cancelInLadder(int level, int side, const QString &code)
{
    TradeDesk::Choice choice{code.toStdString(), static_cast<feed::Side>(side), 0};
    if (level > 0) {
        const feed::QuoteSnapshot *quote = desk.quote(choice.code);
        if (!quote || level > feed::QuoteSnapshot::depth)
            return;
        const auto &levels = *choice.side == feed::Side::Buy ? quote->bids : quote->asks;
        choice.price = feed::priceUnits(levels[size_t(level - 1)].price);
    }
    QString refusal;
    const int cancelled = desk.cancelAll(choice, refusal);
    if (cancelled == 0 && refusal.isEmpty())
        refusal = QStringLiteral("%1 没有可撤的委托").arg(code);
    ordersPanel->say(refusal.isEmpty() ? QStringLiteral("已撤 %1 笔").arg(cancelled) : refusal);
}

/// Without a current row the newest open order is meant. Whether money and position suffice is for the desk to say: it
/// gives back first what the present order holds.
void DeskControl::repriceCurrent()
{
    const std::vector<qint64> open = desk.openOrders({});
    qint64 number = ordersPanel->currentOrder();
    if (number == 0 && !open.empty())
        number = open.back();
    const auto found = desk.desk().broker().orders().find(number);
    if (found == desk.desk().broker().orders().end() || !found->second.isOpen())
        return ordersPanel->say(QStringLiteral("没有可以改价的委托，请选中一笔未成交的委托"));
    const trading::PaperOrder &order = found->second;
    const double price = ticketorders::oppositePrice(desk, order.code, order.side);
    if (price == feed::absent<double>)
        return ordersPanel->say(QStringLiteral("%1 没有对手价，不能改价").arg(QString::fromStdString(order.code)));
    const std::vector<trading::OrderRequest> requests{*desk.remainder(number, price)};
    if (const QString limit = guard.overLimit(requests, present); !limit.isEmpty())
        return ordersPanel->say(limit);
    const QPointer<DeskControl> self(this);
    const bool wanted = isWanted(requests);
    if (!self)
        return;
    if (!wanted)
        return ordersPanel->say(QStringLiteral("已取消，委托 %1 没有改价").arg(number));
    const QString refusal = desk.reprice(number, price);
    ordersPanel->say(refusal.isEmpty() ? QStringLiteral("委托 %1 已改价重新委托").arg(number) : refusal);
}

/// Each order is judged by itself: what cannot be closed now keeps nothing else open.
void DeskControl::closeAll()
{
    const ticketorders::Made made = ticketorders::closeAll(desk);
    QString problem = made.problem;
    std::vector<trading::OrderRequest> possible;
    for (const trading::OrderRequest &request : made.requests) {
        const QString refusal = guard.refusal({request}, present);
        if (refusal.isEmpty())
            possible.push_back(request);
        else
            problem = refusal;
    }
    if (possible.empty())
        return ordersPanel->say(problem);
    const QPointer<DeskControl> self(this);
    const bool wanted = isWanted(possible);
    if (!self)
        return;
    if (!wanted)
        return ordersPanel->say(QStringLiteral("已取消，没有委托"));
    int sent = 0;
    for (const trading::OrderRequest &request : possible) {
        const QString refusal = desk.send({request});
        if (refusal.isEmpty())
            ++sent;
        else
            problem = refusal;
    }
    const QString done = QStringLiteral("全平：已委托 %1 笔").arg(sent);
    ordersPanel->say(problem.isEmpty() ? done : done + QStringLiteral("；") + problem);
}

/// The ticket is ready to close all of it at the price that the other side pays.
void DeskControl::tradePosition(const QString &account, const QString &code, trading::PositionSide side)
{
    const auto book = desk.books().find(account.toStdString());
    if (book == desk.books().end())
        return;
    page.setCurrentCode(code);
    ticket.setCode(code);
    const bool isLong = side == trading::PositionSide::Long;
    ticket.setOpen(false);
    ticket.setBuy(!isLong);
    const double price =
        ticketorders::oppositePrice(desk, code.toStdString(), isLong ? feed::Side::Sell : feed::Side::Buy);
    if (price != feed::absent<double>)
        ticket.setPrice(price);
    const TicketFunds funds = ticketorders::funds(ticket.draft(), desk);
    if (funds.sellable != feed::absent<qint64> && funds.sellable > 0)
        ticket.setQuantity(funds.sellable);
    ticket.startEntry();
}

void DeskControl::openSettings()
{
    BarButton &button = ordersPanel->settingsButton();
    auto *menu = new QMenu(&button);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const auto addSwitch = [&](const QString &text, bool DeskSettings::*value) {
        QAction *action = menu->addAction(text);
        action->setCheckable(true);
        action->setChecked(present.*value);
        connect(action, &QAction::toggled, this, [this, value](bool isOn) {
            DeskSettings changed = present;
            changed.*value = isOn;
            setSettings(changed);
        });
    };
    addSwitch(QStringLiteral("委托前确认"), &DeskSettings::confirms);
    addSwitch(QStringLiteral("成交和废单提示音"), &DeskSettings::sounds);
    menu->addAction(QStringLiteral("单笔上限..."), this, [this] {
        auto *box = new LimitsBox(present, &page);
        box->setAttribute(Qt::WA_DeleteOnClose);
        connect(box, &QDialog::accepted, this, [this, box] { setSettings(box->settings()); });
        box->open();
    });
    menu->addSeparator();
    QAction *end = menu->addAction(QStringLiteral("结束交易日..."), this, &DeskControl::endDay);
    end->setEnabled(desk.canEndDay());
    menu->popup(button.mapToGlobal(QPoint(0, button.height())));
}

void DeskControl::endDay()
{
    const QPointer<DeskControl> self(this);
    if (!askToConfirm(&page, QStringLiteral("结束交易日"),
                      QStringLiteral("未成交的委托将自动撤单，账户结算，模拟交易所进入下一个交易日。"),
                      QStringLiteral("结束")) ||
        !self)
        return;
    ordersPanel->say(desk.endDay() ? QStringLiteral("已进入下一个交易日") : QStringLiteral("行情还没有开始"));
}

/// The counts at the ladder's cancel buttons, of the instrument that it shows.
void DeskControl::refreshLadder()
{
    const std::string code = page.currentCode().toStdString();
    const auto count = [&](feed::Side side) {
        return code.empty() ? 0 : qint64(desk.openOrders({code, side, 0}).size());
    };
    page.ladder().ladder().setOrderNum(count(feed::Side::Buy), count(feed::Side::Sell));
}

} // namespace terminal
