#include "window/terminalprogram.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QStandardPaths>
#include <QtCore/QTimer>
#include <QtWidgets/QApplication>

#include "feed/replay/replayfeed.h"
#include "feed/simulation/simulatedfeed.h"
#include "services/logservice.h"
#include "services/userconfig.h"
#include "theme/themeservice.h"
#include "utils/clogcenter.h"
#include "window/feedpump.h"
#include "window/headlessrun.h"
#include "window/logpage.h"
#include "window/mainwindow.h"
#include "window/topbar.h"
#include "window/viewsettings.h"
#include "zb/messagebox.h"

namespace terminal {

namespace {

constexpr QSize defaultSize(1680, 945);
constexpr int unusable = 2;

void logInfo(const QString &text)
{
    LOG4CXX_INFO(utils::getStdLogger(), text.toStdString());
}

void logError(const QString &text)
{
    LOG4CXX_ERROR(utils::getStdLogger(), text.toStdString());
}

/// What Qt has to say is of interest to those who look after the program, not to those who use it: the file of details.
void logQtMessage(QtMsgType type, const QMessageLogContext &, const QString &text)
{
    if (type == QtCriticalMsg || type == QtFatalMsg)
        logError(text);
    else
        LOG4CXX_DEBUG(utils::getLogger("KDDbgFile"), text.toStdString());
}

void logMessage(const feed::FeedMessage &message)
{
    if (message.severity == feed::FeedMessage::Severity::Warning)
        LOG4CXX_WARN(utils::getStdLogger(), message.toText());
    else
        LOG4CXX_ERROR(utils::getStdLogger(), message.toText());
}

} // namespace

void logQtMessages()
{
    qInstallMessageHandler(logQtMessage);
}

TerminalProgram::TerminalProgram(QApplication &application, const Options &given) : options(given)
{
    refhost::ThemeService::instance().styleApplication(application);
}

TerminalProgram::~TerminalProgram()
{
    qInstallMessageHandler(nullptr);
    window.reset();
    pump.reset();
    refhost::setUserConfig(nullptr);
    refhost::LogService::instance().closeFiles();
}

int TerminalProgram::run()
{
    if (!openLog())
        return unusable;
    if (!options.shotsDir.isEmpty() && !QDir().mkpath(options.shotsDir)) {
        logError(QStringLiteral("--shots: %1: cannot make this folder").arg(options.shotsDir));
        return unusable;
    }
    openConfiguration();
    viewsettings::load(options);
    makeFeed();
    makeWindow();
    if (!options.headless)
        return runWithUser();
    ZB::setMessageBoxesShown(false);
    return HeadlessRun(*pump, *window, options).run();
}

bool TerminalProgram::openLog()
{
    QString folder = options.logDir;
    if (folder.isEmpty() && !options.headless)
        folder = QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation) + QStringLiteral("/logs");
    if (folder.isEmpty())
        return true;
    const QString problem = refhost::LogService::instance().openFiles(folder);
    if (!problem.isEmpty())
        logError(QStringLiteral("--log-dir: %1").arg(problem));
    return problem.isEmpty() || options.logDir.isEmpty();
}

void TerminalProgram::openConfiguration()
{
    QString path = options.configFile;
    if (path.isEmpty() && !options.headless)
        path = QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation) + QStringLiteral("/terminal.ini");
    refhost::setUserConfig(path.isEmpty() ? std::make_unique<refhost::UserConfig>()
                                          : std::make_unique<refhost::UserConfig>(path));
}

void TerminalProgram::makeFeed()
{
    std::unique_ptr<feed::FeedSource> source;
    if (options.replayPaths.isEmpty())
        source = std::make_unique<feed::SimulatedFeed>(options.seed);
    else
        source = std::make_unique<feed::ReplayFeed>(options.replayPaths);
    pump = std::make_unique<FeedPump>(std::make_unique<feed::MarketFeed>(std::move(source), options.speed));
    QObject::connect(pump.get(), &FeedPump::messageArrived, logMessage);
    logInfo(QStringLiteral("启动 %1，行情：%2").arg(QStringLiteral(TERMINAL_VERSION), sourceText()));
    QObject::connect(pump.get(), &FeedPump::finished, pump.get(), [this] {
        const feed::FeedCounters &counters = pump->counters();
        logInfo(QStringLiteral("行情结束：委托 %1，成交 %2，警告 %3，错误 %4")
                    .arg(counters.orders)
                    .arg(counters.deals)
                    .arg(counters.warnings)
                    .arg(counters.errors));
    });
}

void TerminalProgram::makeWindow()
{
    window = std::make_unique<MainWindow>(*pump);
    window->setWindowTitle(QStringLiteral("模拟交易终端 - %1").arg(sourceText()));
    window->topBar().setSource(sourceText(), options.replayPaths.join(QLatin1Char('\n')));
    window->resizeScaled(options.size.value_or(defaultSize));
    window->loadState();
    if (options.size)
        window->resizeScaled(*options.size);
    if (!options.logFile.isEmpty()) {
        window->logPage().follow(options.logFile);
        window->showPage(window->logPage());
    }
    window->show();
}

int TerminalProgram::runWithUser()
{
    if (options.seconds)
        QTimer::singleShot(static_cast<int>(1000 * *options.seconds), window.get(), &QWidget::close);
    window->stalls().restart();
    pump->start();
    const int status = QApplication::exec();
    window->saveState();
    return pump->hasFailed() ? unusable : status;
}

QString TerminalProgram::sourceText() const
{
    const QStringList &paths = options.replayPaths;
    if (paths.isEmpty())
        return QStringLiteral("模拟交易所 种子 %1").arg(options.seed);
    const QString name = QFileInfo(QDir::cleanPath(paths.constFirst())).fileName();
    return paths.size() == 1 ? QStringLiteral("回放 %1").arg(name)
                             : QStringLiteral("回放 %1 等 %2 处").arg(name).arg(paths.size());
}

} // namespace terminal
