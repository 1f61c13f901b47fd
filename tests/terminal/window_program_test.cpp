#include <QtCore/QCryptographicHash>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QProcess>
#include <QtCore/QRegularExpression>
#include <QtCore/QSettings>
#include <QtCore/QTemporaryDir>
#include <QtGui/QImage>
#include <gtest/gtest.h>
#include <map>
#include <set>

#include "window/featuretour.h"

namespace {

const char *const orderHeader = "MDDate,MDTime,SecurityType,SecuritySubType,SecurityIDSource,Symbol,ReceiveDateTime,"
                                "OrderIndex,OrderType,OrderPrice,OrderQty,OrderBSFlag,ChannelNo,ApplSeqNum,OrderNO,"
                                "SecurityID\n";
const char *const tradeHeader =
    "MDDate,MDTime,SecurityType,SecuritySubType,SecurityIDSource,Symbol,TradingPhaseCode,"
    "TradeIndex,TradeBuyNo,TradeSellNo,TradeType,TradeBSFlag,TradePrice,TradeQty,TradeMoney,"
    "ReceiveDateTime,NumTrades,ChannelNo,ApplSeqNum,SecurityID\n";

/// A line of an orders file: an order (type 2) or its cancel (type 10).
QByteArray orderLine(int type, const char *quantity, int side, int sequence, int number)
{
    return QStringLiteral("2023.07.11,09:30:0%1.280,2,02001,101,恒盛能源,2023.07.11T09:25:21.401,1,%2,"
                          "15.929999999999999,%3,%4,1,%1,%5,605580.SH\n")
        .arg(sequence)
        .arg(type)
        .arg(QLatin1String(quantity))
        .arg(side)
        .arg(number)
        .toUtf8();
}

QByteArray tradeLine(int buy, int sell, int quantity, int sequence)
{
    return QStringLiteral("2023.07.11,09:30:0%1.500,2,02001,101,恒盛能源,,1,%2,%3,0,1,15.93,%4,%5,"
                          "2023.07.11T09:30:03.276,0,1,%1,605580.SH\n")
        .arg(sequence)
        .arg(buy)
        .arg(sell)
        .arg(quantity)
        .arg(15.93 * quantity)
        .toUtf8();
}

struct Outcome
{
    int status = -1;
    QByteArray out;
    QByteArray err;

    QJsonObject report() const { return QJsonDocument::fromJson(out).object(); }
};

/// Runs the terminal in a folder that is also its home, so that anything it leaves behind can be seen.
class TerminalRun : public ::testing::Test
{
protected:
    QTemporaryDir folder;

    void write(const QString &name, const QByteArray &contents) const
    {
        QDir(folder.path()).mkpath(QFileInfo(name).path());
        QFile file(folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(contents);
    }

    QByteArray read(const QString &name) const
    {
        QFile file(folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
        return file.readAll();
    }

    /// A small market: order 1 buys 500 and gets 300, then 200 are withdrawn; order 2 sells 300 and gets all.
    void writeSmallMarket() const
    {
        write("orders.csv", orderHeader + orderLine(2, "500", 1, 1, 1) + orderLine(2, "300", 2, 2, 2) +
                                orderLine(10, "200", 1, 4, 1));
        write("trades.csv", tradeHeader + tradeLine(1, 2, 300, 3));
    }

    Outcome run(const QString &options) const
    {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("HOME"), folder.filePath("home"));
        for (const char *name : {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY", "XDG_CONFIG_HOME", "XDG_DATA_HOME"})
            environment.remove(QLatin1String(name));
        process.setProcessEnvironment(environment);
        process.setWorkingDirectory(folder.path());
        process.start(QStringLiteral(TERMINAL_PROGRAM), options.split(QLatin1Char(' '), Qt::SkipEmptyParts));
        Outcome outcome;
        if (process.waitForFinished(600000) && process.exitStatus() == QProcess::NormalExit)
            outcome.status = process.exitCode();
        outcome.out = process.readAllStandardOutput();
        outcome.err = process.readAllStandardError();
        return outcome;
    }
};

/// Lightness from 0 to 255 and number of different colours of a picture.
struct PictureFacts
{
    int lightness = 0;
    int colors = 0;
};

PictureFacts factsOf(const QImage &image)
{
    std::set<QRgb> colors;
    qint64 sum = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            colors.insert(image.pixel(x, y));
            sum += qGray(image.pixel(x, y));
        }
    return {int(sum / (qint64(image.width()) * image.height())), int(colors.size())};
}

} // namespace

TEST_F(TerminalRun, AReplayIsToldInOneLineOfJson)
{
    writeSmallMarket();
    const Outcome outcome = run("--headless --speed max --replay orders.csv --replay trades.csv");
    EXPECT_EQ(outcome.status, 0) << outcome.err.constData();
    EXPECT_EQ(outcome.out.count('\n'), 1) << outcome.out.constData();
    EXPECT_TRUE(outcome.out.endsWith('\n'));
    EXPECT_EQ(outcome.err.toStdString(), "");
    const QJsonObject report = outcome.report();
    EXPECT_EQ(report.value("source").toString().toStdString(), "replay");
    const std::pair<const char *, int> figures[] = {
        {"records", 4},   {"duplicates", 0}, {"orders", 2},          {"deals", 1},  {"order_rows", 2},
        {"deal_rows", 1}, {"updates", 5},    {"shares_filled", 600}, {"errors", 0}, {"warnings", 0}};
    for (const auto &[name, value] : figures)
        EXPECT_EQ(report.value(QLatin1String(name)).toInt(-1), value) << name;
    EXPECT_TRUE(report.value("finished").toBool());
    EXPECT_GT(report.value("frames").toInt(), 0);
    EXPECT_GE(report.value("frame_ms_worst").toDouble(), report.value("frame_ms_p99").toDouble());
    EXPECT_GE(report.value("frame_ms_p99").toDouble(), report.value("frame_ms_p50").toDouble());
    QFile::copy(folder.filePath("trades.csv"), folder.filePath("again.csv"));
    const QJsonObject again = run("--headless --speed max --replay .").report();
    for (const auto &[name, value] : {std::pair("records", 4), std::pair("duplicates", 1), std::pair("deals", 1)})
        EXPECT_EQ(again.value(QLatin1String(name)).toInt(), value) << name << ": a row in two files counts once";
    EXPECT_FALSE(QDir(folder.filePath("home")).exists()) << "a run without a user left something in the user's home";
}

TEST_F(TerminalRun, ASlowReplayEndsWhenItsTimeIsOver)
{
    write("orders.csv", orderHeader + orderLine(2, "500", 1, 1, 1) + orderLine(2, "300", 2, 9, 2));
    const Outcome outcome = run("--headless --speed 0.001 --seconds 0.5 --replay orders.csv");
    EXPECT_EQ(outcome.status, 0) << outcome.err.constData();
    const QJsonObject report = outcome.report();
    EXPECT_FALSE(report.value("finished").toBool(true));
    EXPECT_EQ(report.value("orders").toInt(), 1);
    EXPECT_GE(report.value("seconds").toDouble(), 0.4);
}

TEST_F(TerminalRun, WithoutFilesTheSimulatedExchangeShowsLife)
{
    const Outcome outcome = run("--headless --seconds 1 --speed 600 --seed 5");
    EXPECT_EQ(outcome.status, 0) << outcome.err.constData();
    const QJsonObject report = outcome.report();
    EXPECT_EQ(report.value("source").toString().toStdString(), "simulated");
    EXPECT_GT(report.value("orders").toInt(), 100);
    EXPECT_GT(report.value("deals").toInt(), 10);
    EXPECT_FALSE(report.value("finished").toBool(true));
}

TEST_F(TerminalRun, DataThatCannotBeUsedEndsWithStatusTwoAndTheReason)
{
    write("unknown/other.csv", "a,b,c\n1,2,3\n");
    write("cut.csv", "MDDate,MDTime,SecurityID\n2023.07.11,09:30:00.000,605580.SH\n");
    const std::pair<const char *, const char *> cases[] = {
        {"--replay missing.csv", "missing.csv"},
        {"--replay unknown", "unknown"},
        {"--replay cut.csv", "cut.csv"},
        {"--speed 0", "--speed：“0”既不是大于 0 的数，也不是 max"},
        {"--shots /proc/shots --replay missing.csv", "/proc/shots"},
        {"--log-dir /proc/logs --replay missing.csv", "/proc/logs"},
    };
    for (const auto &[options, text] : cases) {
        const Outcome outcome = run(QStringLiteral("--headless ") + QLatin1String(options));
        EXPECT_EQ(outcome.status, 2) << options;
        EXPECT_TRUE(outcome.err.contains(text)) << options << "\n" << outcome.err.constData();
        EXPECT_EQ(outcome.out.toStdString(), "") << options;
    }
    const Outcome noDisplay = run("");
    EXPECT_EQ(noDisplay.status, 2);
    EXPECT_TRUE(noDisplay.err.contains("--headless")) << noDisplay.err.constData();
}

TEST_F(TerminalRun, ABadLineIsNamedOnTheStandardErrorAndInTheLogAndTheOthersCount)
{
    write("orders.csv",
          orderHeader + orderLine(2, "500", 1, 1, 1) + orderLine(2, "many", 1, 2, 2) + orderLine(2, "300", 2, 3, 3));
    const Outcome outcome = run("--headless --speed max --replay orders.csv --log-dir logs");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.report().value("orders").toInt(), 2);
    EXPECT_EQ(outcome.report().value("errors").toInt(), 1);
    const QByteArray logged = read("logs/terminal.log");
    for (const char *part : {"orders.csv 第 3 行 第 11 列“OrderQty”", "“many”不是整数"}) {
        EXPECT_TRUE(outcome.err.contains(part)) << part << "\n" << outcome.err.constData();
        EXPECT_TRUE(logged.contains(part)) << part << "\n" << logged.constData();
    }
}

TEST_F(TerminalRun, TheLogTellsWhatARunBeganWithWhichFilesItUsedAndHowItEnded)
{
    writeSmallMarket();
    write("shown.log", "line\n");
    run("--headless --speed max --replay orders.csv --log shown.log --log-dir logs --config user.ini");
    QStringList lines = QString::fromUtf8(read("logs/terminal.log")).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    const QString home = QDir(folder.path()).canonicalPath() + QLatin1Char('/');
    for (QString &line : lines) {
        line = line.section(QLatin1Char(' '), 2).remove(home); // without date and time
        line.replace(QRegularExpression(QStringLiteral("版本 [\\d.]+，Qt [\\d.]+")), QStringLiteral("版本，Qt"));
        line.replace(QRegularExpression(QStringLiteral("\\d\\d:\\d\\d:\\d\\d")), QStringLiteral("时间"));
    }
    EXPECT_EQ(
        lines.join(QLatin1Char('\n')).toStdString(),
        "INFO 启动：版本，Qt，行情 回放 orders.csv，速度 最快\n"
        "INFO 启动参数：--headless --speed max --replay orders.csv --log shown.log --log-dir logs --config user.ini\n"
        "INFO 日志文件：logs/terminal.log，详细日志：logs/debug.log\n"
        "INFO 设置文件：user.ini（新建）\n"
        "INFO 显示日志文件：shown.log\n"
        "INFO 行情结束：委托 2，成交 0，行情 1，警告 0，错误 0\n"
        "INFO 设置已保存：user.ini\n"
        "INFO 退出：运行 时间，委托 2，成交 0，行情 1，警告 0，错误 0");
}

/// What tables show of a picture: not the bars above and below them, which tell of the time.
QByteArray tablesOf(const QImage &image)
{
    const QImage tables = image.copy(0, image.height() / 10, image.width(), image.height() * 8 / 10);
    QCryptographicHash hash(QCryptographicHash::Md5);
    for (int y = 0; y < tables.height(); ++y)
        hash.addData(reinterpret_cast<const char *>(tables.constScanLine(y)), tables.bytesPerLine());
    return hash.result();
}

TEST_F(TerminalRun, ATourShowsEveryPageAndFeatureInBothThemesAndScalesAndLeavesTheUsersSettings)
{
    writeSmallMarket();
    {
        QSettings users(folder.filePath("user.ini"), QSettings::IniFormat);
        users.setValue("user/name", "somebody");
        users.setValue("table/101/setting", R"({"columns":[],"frame":{"frozen":1,"marks":[[3,1000,"x"]]}})");
    }
    const QString options =
        QStringLiteral("--headless --speed max --replay orders.csv --replay trades.csv --config user.ini");
    ASSERT_EQ(run(options).status, 0);
    const QByteArray before = read("user.ini");
    const Outcome outcome = run(options + " --shots out/shots --tour --size 700x400");
    EXPECT_EQ(outcome.status, 0) << outcome.err.constData();
    EXPECT_EQ(read("user.ini"), before);

    const QDir shots(folder.filePath("out/shots"));
    for (const char *page : {"market", "log"})
        for (const auto &[theme, percent] :
             {std::pair("dark", 100), std::pair("dark", 150), std::pair("light", 100), std::pair("light", 150)}) {
            const QImage image(shots.filePath(QStringLiteral("%1-%2-%3.png").arg(page, theme).arg(percent)));
            EXPECT_EQ(image.size(), QSize(700, 400) * percent / 100) << page << ' ' << theme;
            const PictureFacts facts = factsOf(image);
            EXPECT_TRUE(theme[0] == 'd' ? facts.lightness < 60 : facts.lightness > 200) << page << ' ' << theme;
        }
    QStringList expected;
    std::map<QByteArray, QString> shown;
    for (const QString &feature : terminal::FeatureTour::names())
        for (const char *look : {"dark-100", "dark-150", "light-100", "light-150"}) {
            expected.append(QStringLiteral("feature-%1-%2.png").arg(feature, QLatin1String(look)));
            const QImage image(shots.filePath(expected.back()));
            EXPECT_GT(factsOf(image).colors, 50) << expected.back().toStdString();
            const auto [same, isNew] = shown.emplace(tablesOf(image), expected.back());
            EXPECT_TRUE(isNew) << expected.back().toStdString() << " shows no more than " << same->second.toStdString();
        }
    const QStringList taken = shots.entryList({"feature-*.png"}, QDir::Files, QDir::Name);
    EXPECT_EQ(taken.join(QLatin1Char('\n')).toStdString(), expected.join(QLatin1Char('\n')).toStdString());
}

TEST_F(TerminalRun, AConfigurationIsReadWhereItIsNamed)
{
    writeSmallMarket();
    write("user.ini", "[window]\ntheme=light\nscale=200\n");
    const Outcome outcome = run("--headless --seconds 1 --replay . --config user.ini --size 640x360 --shots out");
    EXPECT_EQ(outcome.status, 0) << outcome.err.constData();
    EXPECT_EQ(QImage(folder.filePath("out/market-dark-100.png")).size(), QSize(640, 360))
        << "the size of the window is that at 100 %, whatever the user's scale";
    const QByteArray text = read("user.ini");
    EXPECT_TRUE(text.contains("theme=light")) << text.constData();
    EXPECT_TRUE(text.contains("scale=200")) << text.constData();
}

TEST_F(TerminalRun, ADeskFileIsKeptAndOneThatCannotBeUsedEndsTheRunUntouched)
{
    writeSmallMarket();
    const QString options = QStringLiteral("--replay orders.csv --replay trades.csv --speed max --headless --desk ");
    ASSERT_EQ(run(options + "my.desk").status, 0);
    EXPECT_TRUE(read("my.desk").startsWith("SQLite format 3"));

    write("prose.txt", QByteArray(5000, 'x'));
    const Outcome refused = run(options + "prose.txt");
    EXPECT_EQ(refused.status, 2);
    EXPECT_TRUE(refused.err.contains("这不是交易桌面文件，请换一个文件")) << refused.err.toStdString();
    EXPECT_EQ(read("prose.txt"), QByteArray(5000, 'x'));
}
