#include "window/headlessrun.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtGui/QPixmap>
#include <cmath>
#include <cstdio>

#include "table/chpfdatatable.h"
#include "theme/themeservice.h"
#include "utils/clogcenter.h"
#include "window/dealstreampanel.h"
#include "window/featuretour.h"
#include "window/feedpump.h"
#include "window/mainwindow.h"
#include "window/marketpage.h"
#include "window/orderstreampanel.h"
#include "window/page.h"
#include "window/windowpicture.h"

namespace terminal {

namespace {

constexpr double secondsOfSimulation = 10;
constexpr int settlingStep = 10;       ///< milliseconds
constexpr int longestSettling = 30000; ///< milliseconds
constexpr int unusable = 2;

double rounded(double milliseconds)
{
    return std::round(milliseconds * 100) / 100;
}

} // namespace

HeadlessRun::HeadlessRun(FeedPump &feedPump, MainWindow &mainWindow, const Options &given)
    : pump(feedPump), window(mainWindow), options(given),
      size(mainWindow.size() / refhost::ThemeService::instance().scale())
{
    timeOver.setSingleShot(true);
    connect(&timeOver, &QTimer::timeout, this, &HeadlessRun::finish);
    connect(&settling, &QTimer::timeout, this, &HeadlessRun::settle);
    connect(&pump, &FeedPump::finished, this, &HeadlessRun::finish, Qt::QueuedConnection);
}

HeadlessRun::~HeadlessRun() = default;

int HeadlessRun::run()
{
    window.showNow();
    QCoreApplication::processEvents();
    window.stalls().restart();
    clock.start();
    if (options.seconds || options.replayPaths.isEmpty())
        timeOver.start(static_cast<int>(1000 * options.seconds.value_or(secondsOfSimulation)));
    pump.start();
    return QCoreApplication::exec();
}

void HeadlessRun::finish()
{
    timeOver.stop();
    pump.disconnect(this);
    pump.stop();
    if (pump.hasFailed()) {
        QCoreApplication::exit(unusable);
        return;
    }
    settlingTime.start();
    settling.start(0); // the time until the last deals are in counts
}

/// Waits for what is on its way into the tables, then for what is still being read, but not for ever.
void HeadlessRun::settle()
{
    const bool waitedEnough = settlingTime.hasExpired(longestSettling);
    if (!measured) {
        if (window.marketPage().isSettled() || waitedEnough)
            measure();
        return;
    }
    if (!window.isSettled() && !waitedEnough)
        return;
    settling.stop();
    complete();
}

void HeadlessRun::measure()
{
    settling.stop();
    window.showNow();
    QCoreApplication::processEvents();
    seconds = static_cast<double>(clock.elapsed()) / 1000;
    worstStall = window.stalls().worst();
    window.stalls().stop();
    measured = true;
    settling.start(settlingStep);
}

void HeadlessRun::complete()
{
    window.showNow();
    QCoreApplication::processEvents();
    const QByteArray line = report();
    if (!options.shotsDir.isEmpty() && !takeShots()) {
        QCoreApplication::exit(unusable);
        return;
    }
    std::fwrite(line.constData(), 1, static_cast<size_t>(line.size()), stdout);
    std::fflush(stdout);
    QCoreApplication::exit(0);
}

/// The pages first: the tour puts rows into the tables.
bool HeadlessRun::takeShots()
{
    if (!inEveryLook([this](const QString &look) { return takePages(look); }))
        return false;
    if (!options.tour)
        return true;
    FeatureTour tour(window);
    return inEveryLook([this, &tour](const QString &look) {
        return tour.run([this, look](const QString &feature) {
            return takeShot(QStringLiteral("feature-%1-%2.png").arg(feature, look));
        });
    });
}

/// The user's own choices stay as they are.
bool HeadlessRun::inEveryLook(const std::function<bool(const QString &look)> &take)
{
    refhost::ThemeService &service = refhost::ThemeService::instance();
    for (const QString &theme : {QStringLiteral("dark"), QStringLiteral("light")})
        for (const int percent : {100, 150}) {
            service.setTheme(theme);
            service.setScale(percent / 100.0);
            window.resizeScaled(size);
            if (!take(QStringLiteral("%1-%2").arg(theme).arg(percent)))
                return false;
        }
    return true;
}

bool HeadlessRun::takePages(const QString &look)
{
    for (size_t page = 0; page < window.pages().size(); ++page) {
        window.showPage(static_cast<int>(page));
        window.showNow();
        QCoreApplication::processEvents();
        if (!takeShot(QStringLiteral("%1-%2.png").arg(window.pages()[page]->name(), look)))
            return false;
    }
    return true;
}

bool HeadlessRun::takeShot(const QString &name) const
{
    const QString path = QDir(options.shotsDir).filePath(name);
    if (windowPicture(window).save(path))
        return true;
    LOG4CXX_ERROR(utils::getStdLogger(), QStringLiteral("截图 %1 无法写入").arg(path).toStdString());
    return false;
}

QByteArray HeadlessRun::report() const
{
    const feed::FeedCounters &counters = pump.counters();
    const FrameMeter &frames = window.frames();
    const MarketPage &page = window.marketPage();
    const QJsonObject object{
        {QStringLiteral("source"), pump.sourceName()},
        {QStringLiteral("records"), counters.records},
        {QStringLiteral("duplicates"), counters.duplicates},
        {QStringLiteral("orders"), counters.orders},
        {QStringLiteral("deals"), counters.deals},
        {QStringLiteral("quotes"), counters.quotes},
        {QStringLiteral("updates"), counters.updates},
        {QStringLiteral("shares_filled"), pump.sharesFilled()},
        {QStringLiteral("order_rows"), page.orderStream().shownCount()},
        {QStringLiteral("deal_rows"), page.dealStream().shownCount()},
        {QStringLiteral("errors"), counters.errors},
        {QStringLiteral("warnings"), counters.warnings},
        {QStringLiteral("finished"), pump.isFinished()},
        {QStringLiteral("seconds"), seconds},
        {QStringLiteral("frames"), frames.count()},
        {QStringLiteral("frame_ms_p50"), rounded(frames.percentile(0.5))},
        {QStringLiteral("frame_ms_p99"), rounded(frames.percentile(0.99))},
        {QStringLiteral("frame_ms_worst"), rounded(frames.worst())},
        {QStringLiteral("worst_stall_ms"), rounded(worstStall)},
    };
    return QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n';
}

} // namespace terminal
