#include "window/terminalprogram.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QStandardPaths>
#include <QtCore/QTimer>
#include <QtWidgets/QApplication>

#include "desk/confirmbox.h"
#include "desk/deskcontrol.h"
#include "desk/tradedesk.h"
#include "feed/replay/replayfeed.h"
#include "feed/simulation/simulatedfeed.h"
#include "services/accounts.h"
#include "services/logservice.h"
#include "services/mailservice.h"
#include "services/userconfig.h"
#include "theme/themeservice.h"
#include "utils/clogcenter.h"
#include "window/demoaccounts.h"
#include "window/feedpump.h"
#include "window/headlessrun.h"
#include "window/logpage.h"
#include "window/mainwindow.h"
#include "window/productname.h"
#include "window/qttexts.h"
#include "window/ticketpanel.h"
#include "window/topbar.h"
#include "window/viewsettings.h"
#include "zb/messagebox.h"

namespace terminal {

namespace {

constexpr QSize defaultSize(1680, 945);
constexpr int unusable = 2;
const QString userNamePath = QStringLiteral("user/name");

/// What Qt has to say is of interest to those who look after the program, not to those who use it: the file of details.
void logQtMessage(QtMsgType type, const QMessageLogContext &, const QString &text)
{
    if (type == QtCriticalMsg || type == QtFatalMsg)
        RunLog::error(text);
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

TerminalProgram::TerminalProgram(QApplication &application, const Options &given)
    : options(given), qtTexts(chineseQtTexts())
{
    if (qtTexts)
        QCoreApplication::installTranslator(qtTexts.get());
    refhost::ThemeService::instance().styleApplication(application);
}

TerminalProgram::~TerminalProgram()
{
    qInstallMessageHandler(nullptr);
    window.reset();
    pump.reset();
    desk.reset();
    refhost::setMailService(nullptr);
    refhost::setAccountData(nullptr);
    refhost::setUserConfig(nullptr);
    refhost::LogService::instance().closeFiles();
}

int TerminalProgram::run()
{
    if (!openLog())
        return unusable;
    if (!options.shotsDir.isEmpty() && !QDir().mkpath(options.shotsDir)) {
        RunLog::error(QStringLiteral("--shots：无法创建文件夹 %1").arg(options.shotsDir));
        return unusable;
    }
    runLog.tellStart(options, sourceText());
    nameProduct();
    openConfiguration();
    runLog.tellFiles(options, *settings);
    viewsettings::load(options);
    makeFeed();
    window = std::make_unique<MainWindow>(*pump);
    if (!makeDesk())
        return unusable;
    showWindow();
    const int status = options.headless ? runHeadless() : runWithUser();
    runLog.tellEnd(pump->counters(), *settings);
    return status;
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
        RunLog::error(QStringLiteral("--log-dir：%1").arg(problem));
    return problem.isEmpty() || options.logDir.isEmpty();
}

void TerminalProgram::openConfiguration()
{
    QString path = options.configFile;
    if (path.isEmpty() && !options.headless)
        path = QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation) + QStringLiteral("/terminal.ini");
    auto config =
        path.isEmpty() ? std::make_unique<refhost::UserConfig>() : std::make_unique<refhost::UserConfig>(path);
    settings = config.get();
    refhost::setUserConfig(std::move(config));
    refhost::setAccountData(demoAccounts());
    refhost::setMailService(std::make_unique<refhost::MailService>());
    if (settings->value(userNamePath).toString().isEmpty())
        settings->setValue(userNamePath, QStringLiteral("模拟用户"));
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
    QObject::connect(pump.get(), &FeedPump::finished, pump.get(), [this] { runLog.tellMarketEnd(pump->counters()); });
}

void TerminalProgram::showWindow()
{
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

/// Who uses the program is told what is wrong with the file and can go on without; a run without a user ends.
bool TerminalProgram::makeDesk()
{
    desk = std::make_unique<TradeDesk>(options.replayPaths.isEmpty() ? TradeDesk::Market::Simulated
                                                                     : TradeDesk::Market::Recorded);
    pump->addListener(*desk);
    auto *control = new DeskControl(*desk, *pump, window->tradePage(), window->ticketPanel().form()); // the page's
    if (options.deskFile.isEmpty()) {
        control->setUnsaved({});
    } else if (const QString problem = desk->open(options.deskFile); problem.isEmpty()) {
        control->openHistory(options.deskFile);
    } else {
        if (options.headless)
            return false;
        control->setUnsaved(problem);
        ZB::showInformation(window.get(), QStringLiteral("交易桌面"), problem + QStringLiteral("\n本次交易不保存。"));
    }
    desk->begin();
    return true;
}

int TerminalProgram::runHeadless()
{
    ZB::setMessageBoxesShown(false);
    setConfirmBoxesShown(false);
    return HeadlessRun(*pump, *window, options).run();
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
