#include "window/mainwindow.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QEvent>
#include <QtWidgets/QShortcut>
#include <QtWidgets/QVBoxLayout>

#include "kv/cuserconfig.h"
#include "window/feedpump.h"
#include "window/marketpage.h"
#include "window/statusbar.h"
#include "window/topbar.h"
#include "window/viewsettings.h"
#include "zb/cuiresource.h"

namespace terminal {

namespace {

const QString geometryPath = QStringLiteral("window/geometry");
constexpr int refreshMs = 250;
constexpr int scaleStep = 25;

} // namespace

MainWindow::MainWindow(FeedPump &pump)
    : top(new TopBar(pump, this)), market(new MarketPage(this)),
      status(new StatusBar(pump, frameMeter, stallMeter, this))
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(top);
    layout->addWidget(market, 1);
    layout->addWidget(status);
    setMinimumSize(ZB::scaled(640), ZB::scaled(360));

    pump.setOrderSink([this](const FeedPump::Records &records) { market->takeOrders(records); });
    pump.setDealSink([this](const FeedPump::Records &records) { market->takeDeals(records); });
    connect(&pump, &FeedPump::messageArrived, status, &StatusBar::showMessage);
    connect(&pump, &FeedPump::finished, this, &MainWindow::refresh);
    connect(top, &TopBar::layoutToggled, market, &MarketPage::toggleLayout);
    connect(&refreshTimer, &QTimer::timeout, this, &MainWindow::refresh);
    refreshTimer.start(refreshMs);
    addShortcuts();
    market->focusNextPanel();
}

MainWindow::~MainWindow() = default;

void MainWindow::addShortcuts()
{
    const auto add = [this](const QKeySequence &keys, auto action) {
        connect(new QShortcut(keys, this), &QShortcut::activated, this, action);
    };
    add(Qt::CTRL | Qt::Key_P, [this] { top->togglePause(); });
    add(Qt::CTRL | Qt::Key_BracketLeft, [this] { top->stepSpeed(false); });
    add(Qt::CTRL | Qt::Key_BracketRight, [this] { top->stepSpeed(true); });
    add(Qt::CTRL | Qt::Key_T, [this] { top->toggleTheme(); });
    add(Qt::CTRL | Qt::Key_L, [this] { market->toggleLayout(); });
    add(Qt::CTRL | Qt::Key_0, [] { viewsettings::setScalePercent(100); });
    for (const int key : {Qt::Key_Plus, Qt::Key_Equal})
        add(Qt::CTRL | key, [] { viewsettings::setScalePercent(viewsettings::scalePercent() + scaleStep); });
    add(Qt::CTRL | Qt::Key_Minus, [] { viewsettings::setScalePercent(viewsettings::scalePercent() - scaleStep); });
    add(Qt::Key_F6, [this] { market->focusNextPanel(); });
    add(Qt::CTRL | Qt::Key_Q, [this] { close(); });
}

void MainWindow::refresh()
{
    top->refresh();
    market->refresh();
    status->refresh();
}

void MainWindow::resizeScaled(const QSize &size)
{
    resize(ZB::scaled(size.width()), ZB::scaled(size.height()));
}

void MainWindow::showNow()
{
    market->showNow();
    top->refresh();
}

void MainWindow::loadState()
{
    if (const KV::CUserConfig *config = KV::getUserConfig())
        restoreGeometry(config->value(geometryPath).toByteArray());
    market->loadState();
}

void MainWindow::saveState() const
{
    if (KV::CUserConfig *config = KV::getUserConfig())
        config->setValue(geometryPath, saveGeometry());
    market->saveState();
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
