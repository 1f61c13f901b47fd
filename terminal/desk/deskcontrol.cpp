#include "desk/deskcontrol.h"

#include <QtCore/QPointer>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMenu>
#include <QtWidgets/QShortcut>

#include "desk/confirmbox.h"
#include "desk/deskcommands.h"
#include "desk/feesbox.h"
#include "desk/historypanel.h"
#include "desk/limitsbox.h"
#include "desk/owndealspanel.h"
#include "desk/ownpositionspanel.h"
#include "desk/tradedesk.h"
#include "order/cquotespriceslist.h"
#include "window/accountfollower.h"
#include "window/barbutton.h"
#include "window/feedpump.h"
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

DeskControl::DeskControl(TradeDesk &tradeDesk, FeedPump &feedPump, TradePage &tradePage, TicketForm &ticketForm)
    : QObject(&tradePage), desk(tradeDesk), pump(feedPump), page(tradePage), ticket(ticketForm),
      guard(tradeDesk, feedPump), present(DeskSettings::load()), sounds(&QApplication::beep),
      makeSound([this](bool isFill) { sounds.play(isFill); })
{
    desk.setRules(present.fees.rules());
    addPanels(page);
    commands = std::make_unique<DeskCommands>(desk, guard, present, *ordersPanel, page);
    addKeys(page);
    joinDesk();
    joinPage();
    page.window()->installEventFilter(this);
}

DeskControl::~DeskControl() = default;

void DeskControl::addPanels(TradePage &owner)
{
    ordersPanel = new OwnOrdersPanel;
    dealsPanel = new OwnDealsPanel;
    positionsPanel = new OwnPositionsPanel;
    fundsPanel = new FundsPanel(OwnFundsTable, nullptr, /* hasFutures */ true);
    orderHistoryPanel = new HistoryPanel(trading::HistoryQuery::Kind::Orders);
    dealHistoryPanel = new HistoryPanel(trading::HistoryQuery::Kind::Deals);
    for (Panel *panel : {static_cast<Panel *>(ordersPanel), static_cast<Panel *>(dealsPanel),
                         static_cast<Panel *>(positionsPanel), static_cast<Panel *>(fundsPanel),
                         static_cast<Panel *>(orderHistoryPanel), static_cast<Panel *>(dealHistoryPanel)})
        owner.addBottomPanel(panel, panel->caption());
    new AccountFollower(desk.toldAccounts(), *fundsPanel, *positionsPanel); // belongs to the panel of funds
}

void DeskControl::addKeys(TradePage &owner)
{
    const auto add = [&](int key, Command wanted) {
        auto *shortcut = new QShortcut(key, &owner);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        shortcut->setAutoRepeat(false);
        connect(shortcut, &QShortcut::activated, this, [this, wanted] { commands->run(wanted); });
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
    connect(&desk, &TradeDesk::storageProblemChanged, ordersPanel, &OwnRecordsPanel::setMark);
    connect(&desk, &TradeDesk::ended, this, [this](qint64 order) { commands->orderEnded(order); });
    connect(&desk, &TradeDesk::dayBegan, this,
            [this](const QString &, int day) { ordersPanel->say(QStringLiteral("已进入交易日 %1").arg(day)); });
    connect(&desk, &TradeDesk::filled, this, [this] { makeSoundIfWanted(true); });
    connect(&desk, &TradeDesk::refused, this, [this] { makeSoundIfWanted(false); });
    connect(&desk, &TradeDesk::rejected, this, [this](const trading::PaperOrder &order) {
        ordersPanel->say(QStringLiteral("委托 %1 废单：%2").arg(order.id).arg(QString::fromStdString(order.remark)));
        makeSoundIfWanted(false);
    });
}

void DeskControl::joinPage()
{
    ticket.setSender([this](const OrderDraft &draft) { return send(draft); });
    ticket.refuseTrade(kdservice::TraderCredit, ticketorders::noCredit());
    ticket.setFundsSource([this](const OrderDraft &draft) { return ticketorders::funds(draft, desk); });
    connect(&page, &TradePage::ladderClicked, this, [this](int event, int level, int side, const QString &code) {
        if (event == ladderCancel)
            commands->cancelInLadder(level, side, code, page.ladder().shownPrice(level, side));
    });
    page.ladder().setCancelsShown(true);
    connect(&page, &TradePage::currentCodeChanged, this, &DeskControl::refreshLadder);
    connect(ordersPanel, &OwnRecordsPanel::activated, this, [this](qint64 order) { commands->cancel(order); });
    connect(ordersPanel, &OwnOrdersPanel::commanded, this, [this](Command wanted) { commands->run(wanted); });
    connect(&ordersPanel->settingsButton(), &BarButton::clicked, this, &DeskControl::openSettings);
    connect(positionsPanel, &OwnPositionsPanel::activated, this, &DeskControl::tradePosition);
}

void DeskControl::openHistory(const QString &path)
{
    orderHistoryPanel->open(path);
    dealHistoryPanel->open(path);
}

void DeskControl::setUnsaved(const QString &why)
{
    ordersPanel->setMark(why.isEmpty() ? QStringLiteral("没有用 --desk 指定交易桌面文件，交易不保存")
                                       : QStringLiteral("交易不保存：") + why);
    guard.setUnsaved(why);
}

/// What the file could not take yet would be gone.
bool DeskControl::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::Close || desk.desk().storageProblem().isEmpty())
        return QObject::eventFilter(watched, event);
    const bool isWanted = askToConfirm(
        &page, QStringLiteral("退出"),
        QStringLiteral("%1\n\n最近的委托和成交还没有保存，现在退出就会丢失。").arg(desk.desk().storageProblem()),
        QStringLiteral("仍然退出"), EnterMeans::No);
    if (!isWanted)
        event->ignore();
    return !isWanted;
}

void DeskControl::setSettings(const DeskSettings &settings)
{
    present = settings;
    present.save();
    desk.setRules(present.fees.rules());
}

void DeskControl::makeSoundIfWanted(bool isFill)
{
    if (present.sounds)
        makeSound(isFill);
}

QString DeskControl::refuse(const QString &text)
{
    makeSoundIfWanted(false);
    return text;
}

/// What is wrong is said before anything is asked, and judged once more when it goes out: the market goes on while the
/// user thinks.
QString DeskControl::send(const OrderDraft &draft)
{
    const ticketorders::Made made = ticketorders::fromDraft(draft, desk);
    if (made.requests.empty())
        return refuse(made.problem);
    if (const QString refusal = guard.refusal(made.requests, present); !refusal.isEmpty())
        return refuse(refusal);
    const QPointer<DeskControl> self(this);
    if (!guard.isWanted(made.requests, present, page) || !self)
        return QStringLiteral("已取消，没有委托");
    return desk.send(made.requests);
}

/// The ticket is ready to close all of it at the price that the other side pays.
void DeskControl::tradePosition(const QString &account, const QString &code, trading::PositionSide side)
{
    const auto book = desk.books().find(account.toStdString());
    if (book == desk.books().end())
        return;
    page.setCurrentCode(code);
    const bool isFuture = book->second.account().kind == trading::AccountKind::Future;
    ticket.setTrade(isFuture ? kdservice::TraderFuture : kdservice::TraderStock);
    ticket.setCode(code);
    ticket.setAccount(account);
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
    addSwitch(QStringLiteral("提示音（成交一声，废单两声）"), &DeskSettings::sounds);
    // A box has an event loop of its own, and the menu must be off the stack by then.
    const auto addEntry = [&](const QString &text, void (DeskControl::*open)()) {
        QAction *action = menu->addAction(text);
        connect(action, &QAction::triggered, this, open, Qt::QueuedConnection);
        return action;
    };
    addEntry(QStringLiteral("单笔上限..."), &DeskControl::openBox<LimitsBox>);
    addEntry(QStringLiteral("费率和保证金..."), &DeskControl::openBox<FeesBox>);
    menu->addSeparator();
    QAction *end = addEntry(QStringLiteral("结束交易日..."), &DeskControl::endDay);
    end->setEnabled(pump.canEndDay());
    menu->popup(button.mapToGlobal(QPoint(0, button.height())));
}

template <typename Box>
void DeskControl::openBox()
{
    auto *box = new Box(present, &page);
    box->setAttribute(Qt::WA_DeleteOnClose);
    connect(box, &QDialog::accepted, this, [this, box] { setSettings(box->settings()); });
    box->open();
}

void DeskControl::endDay()
{
    const QPointer<DeskControl> self(this);
    if (askToConfirm(&page, QStringLiteral("结束交易日"),
                     QStringLiteral("未成交的委托将自动撤单，账户结算，模拟交易所进入下一个交易日。"),
                     QStringLiteral("结束")) &&
        self)
        pump.endDay();
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
