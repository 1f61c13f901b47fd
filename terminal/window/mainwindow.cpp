#include "window/mainwindow.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QEvent>
#include <QtWidgets/QShortcut>
#include <QtWidgets/QStackedWidget>
#include <QtWidgets/QVBoxLayout>
#include <algorithm>

#include "kv/cuserconfig.h"
#include "window/accountpage.h"
#include "window/feedpump.h"
#include "window/logpage.h"
#include "window/marketpage.h"
#include "window/page.h"
#include "window/statusbar.h"
#include "window/ticketpanel.h"
#include "window/topbar.h"
#include "window/tradepage.h"
#include "window/viewsettings.h"
#include "window/windowdialogs.h"
#include "zb/cuiresource.h"

namespace terminal {

namespace {

const QString geometryPath = QStringLiteral("window/geometry");
const QString pagePath = QStringLiteral("window/page");
constexpr int refreshMs = 250;
constexpr int scaleStep = 25;

} // namespace

MainWindow::MainWindow(FeedPump &pump)
    : top(new TopBar(pump, this)), stack(new QStackedWidget(this)), market(new MarketPage(stack)),
      trade(new TradePage(pump, stack)), ticket(new TicketPanel), accounts(new AccountPage(stack)),
      log(new LogPage(stack)), status(new StatusBar(pump, frameMeter, stallMeter, this)),
      dialogs(new WindowDialogs(this))
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(top);
    layout->addWidget(stack, 1);
    layout->addWidget(status);
    setMinimumSize(ZB::scaled(640), ZB::scaled(360));
    trade->addSidePanel(ticket);
    ticket->follow(*trade);
    addPage(market);
    addPage(trade);
    addPage(accounts);
    addPage(log);

    pump.setOrderSink([this](const FeedPump::Records &records) { market->takeOrders(records); });
    pump.setDealSink([this](const FeedPump::Records &records) { market->takeDeals(records); });
    pump.setQuoteSink([this](const FeedPump::Records &records) { trade->takeQuotes(records); });
    pump.addListener(*accounts);
    connect(&pump, &FeedPump::messageArrived, status, &StatusBar::showMessage);
    connect(&pump, &FeedPump::finished, this, &MainWindow::refresh);
    connect(top, &TopBar::layoutToggled, this, [this] { currentPage().toggleLayout(); });
    connect(top, &TopBar::pageChosen, this, qOverload<int>(&MainWindow::showPage));
    connect(top, &TopBar::aboutChosen, dialogs, &WindowDialogs::showAbout);
    connect(log, &LogPage::sendRequested, dialogs, &WindowDialogs::showSendLog);
    connect(&refreshTimer, &QTimer::timeout, this, &MainWindow::refresh);
    refreshTimer.start(refreshMs);
    addShortcuts();
    showPage(0);
}

MainWindow::~MainWindow() = default;

void MainWindow::addPage(Page *page)
{
    allPages.push_back(page);
    stack->addWidget(page);
    top->addPage(page->title());
}

Page &MainWindow::currentPage() const
{
    return *allPages[static_cast<size_t>(stack->currentIndex())];
}

void MainWindow::showPage(int number)
{
    if (number < 0 || number >= stack->count())
        return;
    stack->setCurrentIndex(number);
    top->setCurrentPage(number);
    currentPage().refresh();
    if (!currentPage().isAncestorOf(focusWidget()))
        currentPage().focusNextPanel();
}

void MainWindow::showPage(const Page &page)
{
    const auto found = std::find(allPages.begin(), allPages.end(), &page);
    showPage(static_cast<int>(found - allPages.begin()));
}

void MainWindow::addShortcuts()
{
    const auto add = [this](const QKeySequence &keys, auto action) {
        connect(new QShortcut(keys, this), &QShortcut::activated, this, action);
    };
    add(Qt::CTRL | Qt::Key_P, [this] { top->togglePause(); });
    add(Qt::CTRL | Qt::Key_BracketLeft, [this] { top->stepSpeed(false); });
    add(Qt::CTRL | Qt::Key_BracketRight, [this] { top->stepSpeed(true); });
    add(Qt::CTRL | Qt::Key_T, [this] { top->toggleTheme(); });
    add(Qt::CTRL | Qt::Key_L, [this] { currentPage().toggleLayout(); });
    add(Qt::CTRL | Qt::Key_0, [] { viewsettings::setScalePercent(100); });
    for (const int key : {Qt::Key_Plus, Qt::Key_Equal})
        add(Qt::CTRL | key, [] { viewsettings::setScalePercent(viewsettings::scalePercent() + scaleStep); });
    add(Qt::CTRL | Qt::Key_Minus, [] { viewsettings::setScalePercent(viewsettings::scalePercent() - scaleStep); });
    add(Qt::Key_F1, [this] { dialogs->showAbout(); });
    add(Qt::CTRL | Qt::SHIFT | Qt::Key_S, [this] { dialogs->showSendLog(); });
    add(Qt::Key_F6, [this] { currentPage().focusNextPanel(); });
    for (int number = 0; number < static_cast<int>(allPages.size()); ++number)
        add(Qt::CTRL | (Qt::Key_1 + number), [this, number] { showPage(number); });
    add(Qt::CTRL | Qt::Key_Q, [this] { close(); });
}

void MainWindow::refresh()
{
    top->refresh();
    currentPage().refresh();
    status->refresh();
}

void MainWindow::resizeScaled(const QSize &size)
{
    resize(ZB::scaled(size.width()), ZB::scaled(size.height()));
}

void MainWindow::showNow()
{
    for (Page *page : allPages)
        page->showNow();
    top->refresh();
}

bool MainWindow::isSettled()
{
    return std::all_of(allPages.begin(), allPages.end(), [](Page *page) { return page->isSettled(); });
}

void MainWindow::loadState()
{
    for (Page *page : allPages)
        page->loadState();
    const KV::CUserConfig *config = KV::getUserConfig();
    if (!config)
        return;
    restoreGeometry(config->value(geometryPath).toByteArray());
    const QString front = config->value(pagePath).toString();
    for (size_t number = 0; number < allPages.size(); ++number)
        if (allPages[number]->name() == front)
            showPage(static_cast<int>(number));
}

void MainWindow::saveState() const
{
    for (const Page *page : allPages)
        page->saveState();
    KV::CUserConfig *config = KV::getUserConfig();
    if (!config)
        return;
    config->setValue(geometryPath, saveGeometry());
    config->setValue(pagePath, currentPage().name());
}

void MainWindow::themeChanged()
{
    setMinimumSize(ZB::scaled(640), ZB::scaled(360));
}

bool MainWindow::event(QEvent *event)
{
    if (event->type() != QEvent::UpdateRequest)
        return ZB::CEventWidgetT<QWidget>::event(event);
    // All of a frame's painting happens in here.
    QElapsedTimer time;
    time.start();
    const bool result = ZB::CEventWidgetT<QWidget>::event(event);
    frameMeter.add(static_cast<double>(time.nsecsElapsed()) / 1e6);
    return result;
}

void MainWindow::showEvent(QShowEvent *event)
{
    ZB::CEventWidgetT<QWidget>::showEvent(event);
    refresh();
}

} // namespace terminal
