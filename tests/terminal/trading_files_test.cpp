#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtSql/QSqlDatabase>
#include <QtSql/QSqlQuery>
#include <QtTest/QTest>
#include <gtest/gtest.h>
#include <random>
#include <sched.h>
#include <sys/mount.h>
#include <thread>
#include <unistd.h>

#include "filesizelimit.h"
#include "trading/desk.h"
#include "trading/deskstore.h"
#include "trading_random.h"

using namespace tradingtest;
using trading::DeskChange;
using trading::DeskState;
using trading::DeskStore;

namespace {

/// Runs statements past the program.
void execute(const QString &path, const QStringList &statements)
{
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("files-test"));
        database.setDatabaseName(path);
        ASSERT_TRUE(database.open());
        QSqlQuery query(database);
        for (const QString &statement : statements)
            ASSERT_TRUE(query.exec(statement)) << statement.toStdString();
    }
    QSqlDatabase::removeDatabase(QStringLiteral("files-test"));
}

QByteArray contents(const QString &path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
}

void write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write(bytes), bytes.size());
}

/// What a broker that trades at random for that many steps changes, step by step.
std::vector<DeskChange> tradedChanges(int steps, unsigned seed = 1)
{
    RandomTrading market(seed);
    trading::PaperBroker broker;
    broker.openAccount(stockAccount());
    broker.openAccount(futureAccount());
    for (const feed::Instrument &instrument : market.instruments)
        broker.takeInstrument(instrument);
    std::vector<DeskChange> changes;
    for (int step = 0; step < steps; ++step) {
        broker.takeQuote(market.nextQuote(at(monday, 9, 30 + step / 60 % 30, step % 60)));
        send(broker, market.nextRequest());
        changes.push_back(broker.takeChanges());
    }
    return changes;
}

/// A desk file after some trading, closed.
void makeDesk(const QString &path, int steps = 300)
{
    DeskStore store;
    ASSERT_EQ(store.open(path).toStdString(), "");
    ASSERT_EQ(store.apply(tradedChanges(steps)).toStdString(), "");
}

std::string openProblem(const QString &path, DeskState *state = nullptr)
{
    DeskStore store;
    DeskState ignored;
    QString problem = store.open(path);
    if (problem.isEmpty())
        problem = store.load(state ? *state : ignored);
    return problem.toStdString();
}

DeskState loaded(const QString &path)
{
    DeskState state;
    EXPECT_EQ(openProblem(path, &state), "");
    return state;
}

std::string text(const QString &path, const char *what)
{
    return "交易桌面文件 " + path.toStdString() + "：" + what;
}

class TradingFiles : public ::testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(folder.isValid()); }

    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("desk.db"));
};

} // namespace

TEST_F(TradingFiles, OfANewerVersionOrOfAnotherProgramAreNamedAndNotTouched)
{
    makeDesk(path);
    execute(path, {QStringLiteral("PRAGMA user_version = 3"), QStringLiteral("PRAGMA wal_checkpoint(TRUNCATE)")});
    const QByteArray newer = contents(path);
    EXPECT_EQ(openProblem(path),
              text(path, "文件由更新版本的程序写成（格式 3，本程序只认到 2），请升级程序或换一个文件"));
    EXPECT_TRUE(contents(path) == newer);

    const QString other = folder.filePath(QStringLiteral("other.db"));
    execute(other, {QStringLiteral("CREATE TABLE account(id)")});
    const QByteArray before = contents(other);
    EXPECT_EQ(openProblem(other), text(other, "这不是交易桌面文件，请换一个文件"));
    EXPECT_TRUE(contents(other) == before);

    const QString prose = folder.filePath(QStringLiteral("prose.txt"));
    write(prose, QByteArray("a text, and not a short one\n").repeated(100));
    EXPECT_EQ(openProblem(prose), text(prose, "这不是交易桌面文件，请换一个文件"));
    EXPECT_EQ(openProblem(folder.path()), text(folder.path(), "这是一个文件夹，请换一个文件"));
    const QString nowhere = folder.filePath(QStringLiteral("none/desk.db"));
    EXPECT_EQ(openProblem(nowhere), text(nowhere, "打不开或建不了这个文件，请检查文件夹和权限"));
}

TEST_F(TradingFiles, OfTheFirstVersionAreTakenUp)
{
    makeDesk(path);
    execute(path, {QStringLiteral("ALTER TABLE position DROP COLUMN last_price"),
                   QStringLiteral("UPDATE position SET open_cost = open_cost + 1 WHERE kind = 0"),
                   QStringLiteral("PRAGMA user_version = 1")});
    const DeskState state = loaded(path);
    ASSERT_FALSE(state.positions.empty());
    trading::PaperBroker broker;
    ASSERT_TRUE(broker.restore(state));
    for (const auto &[key, position] : broker.accounts().at("S1").positions())
        EXPECT_EQ(position.openCost, position.basis()) << key.first;
    DeskStore store;
    ASSERT_EQ(store.open(path).toStdString(), "");
    EXPECT_EQ(store.apply(tradedChanges(10, 2)).toStdString(), "");
}

TEST_F(TradingFiles, BringTheLastPricesToTheNextDay)
{
    const trading::OrderRequest buy{"S1", "600001.SH", feed::Side::Buy, {}, 10, 1000};
    trading::Money equity = 0;
    {
        trading::Desk desk;
        ASSERT_EQ(desk.open(path).toStdString(), "");
        desk.openAccount(stockAccount());
        desk.takeInstrument(stock(0, "600001.SH"));
        desk.takeQuote(quote(0, at(monday, 14, 50), {{9.99, 5000}}, {{10, 5000}}, 10));
        ASSERT_EQ(desk.submit(buy).order, 1);
        ASSERT_TRUE(QTest::qWaitFor([&] { return desk.broker().orders().at(1).filled.quantity == 1000; }));
        desk.takeQuote(quote(0, at(monday, 14, 59), {{10.99, 5000}}, {{11, 5000}}, 11));
        equity = desk.broker().accounts().at("S1").funds().total;
    }
    trading::Desk desk;
    ASSERT_EQ(desk.open(path).toStdString(), "");
    std::vector<trading::DayClose> closes;
    QObject::connect(&desk, &trading::Desk::changed, [&](const DeskChange &change) {
        closes.insert(closes.end(), change.days.begin(), change.days.end());
    });
    desk.takeInstrument(stock(0, "600001.SH"));
    desk.takeQuote(quote(0, at(tuesday, 9, 30), {{10.99, 5000}}, {{11, 5000}}, 11));
    EXPECT_EQ(desk.broker().accounts().at("S1").funds().profitToday, 0);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !closes.empty(); }));
    EXPECT_EQ(closes[0].equity, equity);
}

/// The program was killed after an order was stored and before the desk heard of it.
TEST_F(TradingFiles, AnOrderThatWasStoredAsSendingIsAcceptedByTheNextRun)
{
    DeskChange change;
    {
        trading::PaperBroker broker;
        broker.openAccount(stockAccount());
        broker.takeInstrument(stock(0, "600001.SH"));
        broker.takeTime(at(monday, 10, 0));
        ASSERT_EQ(broker.submit({"S1", "600001.SH", feed::Side::Buy, {}, 9.9, 100}).order, 1);
        DeskStore store;
        ASSERT_EQ(store.open(path).toStdString(), "");
        ASSERT_EQ(store.apply({broker.takeChanges()}).toStdString(), "");
    }
    {
        trading::Desk desk;
        ASSERT_EQ(desk.open(path).toStdString(), "");
        ASSERT_EQ(desk.initialState().orders.size(), 1u);
        EXPECT_EQ(desk.initialState().orders[0].status, feed::OrderStatus::Accepted);
        desk.takeTime(at(monday, 10, 1));
    }
    EXPECT_EQ(loaded(path).orders.at(0).status, feed::OrderStatus::Accepted);
}

TEST_F(TradingFiles, InUseByAnotherTerminalAreRefused)
{
    DeskStore first;
    ASSERT_EQ(first.open(path).toStdString(), "");
    EXPECT_EQ(openProblem(path), text(path, "文件正被另一个终端使用，请先关闭那个终端"));
    first.close();
    EXPECT_EQ(openProblem(path), "");
}

/// Whatever byte is wrong: the desk opens with what is there, or says that the file is damaged; it never changes it in
/// the second case, and never ends the program.
TEST_F(TradingFiles, ThatAreDamagedAnywhereNeverEndTheProgram)
{
    makeDesk(path);
    execute(path, {QStringLiteral("PRAGMA wal_checkpoint(TRUNCATE)")});
    const QByteArray good = contents(path);
    ASSERT_GT(good.size(), 40'000);
    const unsigned seed = std::random_device()();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 numbers(seed);
    int refused = 0;
    for (int round = 0; round < 60; ++round) {
        QByteArray bad = good;
        const int start = int(numbers() % unsigned(good.size()));
        switch (round % 3) {
        case 0: // one page or less of nonsense
            for (int i = start; i < std::min(start + 2000, good.size()); ++i)
                bad[i] = char(numbers());
            break;
        case 1: // the end is missing
            bad.truncate(start);
            break;
        default: // a hole
            std::fill(bad.begin() + start, bad.begin() + std::min(start + 10'000, good.size()), '\0');
        }
        QFile::remove(path + QStringLiteral("-wal"));
        QFile::remove(path + QStringLiteral("-shm"));
        write(path, bad);
        trading::Desk desk;
        const QString problem = desk.open(path);
        if (problem.isEmpty())
            continue;
        ++refused;
        EXPECT_TRUE(contents(path) == bad) << "round " << round;
        EXPECT_TRUE(problem.startsWith(QStringLiteral("交易桌面文件 %1：").arg(path))) << problem.toStdString();
        EXPECT_TRUE(problem.contains(QStringLiteral("请"))) << problem.toStdString();
    }
    EXPECT_GT(refused, 20);
}

TEST_F(TradingFiles, WithValuesThatNoDeskWritesAreRefused)
{
    makeDesk(path);
    execute(path, {QStringLiteral("PRAGMA wal_checkpoint(TRUNCATE)")});
    const QByteArray good = contents(path);
    for (const char *statement :
         {"UPDATE account SET kind = 7 WHERE id = 'S1'", "UPDATE position SET side = side + 7",
          "UPDATE position SET kind = 99", "UPDATE position SET multiplier = 0",
          "UPDATE position SET old_quantity = -1", "UPDATE position SET today_quantity = -1",
          "UPDATE orders SET filled = quantity + 100 WHERE status = 56", "UPDATE position SET today_basis = -5",
          "UPDATE orders SET status = 7 WHERE id = 3", "UPDATE orders SET side = 7 WHERE id = 3",
          "UPDATE orders SET offset = 7 WHERE id = 3", "UPDATE orders SET price = -1 WHERE id = 3",
          "UPDATE orders SET quantity = 0 WHERE id = 3", "UPDATE position SET account = 'nobody'",
          "DELETE FROM account",
          "UPDATE orders SET quantity = quantity + 1000000, held_today = held_today + 1000000 WHERE held_today > 0",
          "UPDATE orders SET held_old = 1000000000 WHERE id = (SELECT max(id) FROM orders WHERE offset <> 48)"}) {
        write(path, good);
        execute(path, {QLatin1String(statement), QStringLiteral("PRAGMA wal_checkpoint(TRUNCATE)")});
        const QByteArray bad = contents(path);
        trading::Desk desk;
        EXPECT_EQ(desk.open(path).toStdString(), text(path, "账目互相矛盾，文件已损坏，请用备份恢复或换一个文件"))
            << statement;
        EXPECT_TRUE(contents(path) == bad) << statement;
    }
}

TEST_F(TradingFiles, ThatAreReadOnlyAreNamedAndRead)
{
    makeDesk(path);
    QFile::setPermissions(path, QFileDevice::ReadOwner | QFileDevice::ReadGroup | QFileDevice::ReadOther);
    // The one user whom no permission stops tries it as somebody else.
    const bool isRoot = getuid() == 0;
    if (isRoot) {
        ASSERT_EQ(chmod(folder.path().toLocal8Bit().constData(), 0777), 0);
        ASSERT_EQ(setresuid(65534, 65534, 0), 0);
    }
    const std::string problem = openProblem(path);
    if (isRoot) {
        ASSERT_EQ(setresuid(0, 0, 0), 0);
    }
    EXPECT_EQ(problem, text(path, "文件是只读的，请改为可写或换一个文件"));
}

TEST_F(TradingFiles, OnAFullDiskSayThatAndHoldNothingOfWhatFailed)
{
    std::string outcome = "no disk of our own: needs the right to mount";
    // The disk is seen by this thread and those it starts only.
    std::thread([&] {
        const QByteArray place = folder.path().toLocal8Bit();
        if (unshare(CLONE_NEWNS) != 0 || mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
            mount("none", place.constData(), "tmpfs", 0, "size=400k") != 0)
            return;
        const std::vector<DeskChange> changes = tradedChanges(4000);
        size_t stored = 0;
        {
            DeskStore store;
            ASSERT_EQ(store.open(path).toStdString(), "");
            QString problem;
            for (; stored < changes.size() && problem.isEmpty(); ++stored)
                problem = store.apply({changes[stored]});
            outcome = problem.toStdString();
            ASSERT_GT(stored, 1u);
            --stored;
            // With room again it goes on where it stood.
            ASSERT_EQ(mount("none", place.constData(), "tmpfs", MS_REMOUNT, "size=20m"), 0);
            ASSERT_EQ(store.apply({changes.begin() + std::ptrdiff_t(stored), changes.end()}).toStdString(), "");
        }
        const DeskState state = loaded(path);
        qint64 orders = 0;
        qint64 deals = 0;
        for (const DeskChange &change : changes) {
            for (const trading::PaperOrder &order : change.orders)
                orders = std::max(orders, order.id);
            deals += qint64(change.deals.size());
        }
        EXPECT_EQ(state.orders.size(), size_t(orders));
        EXPECT_EQ(state.deals.size(), size_t(deals));
    }).join();
    if (outcome.rfind("no disk", 0) == 0)
        GTEST_SKIP() << outcome;
    EXPECT_EQ(outcome, text(path, "磁盘已满，请清理出空间"));
}

/// While nothing can be written: orders end as rejected or are refused, each with the reason, and what had been stored
/// stays. Once it works again, the desk says so and goes on.
TEST_F(TradingFiles, ThatCannotBeWrittenForAWhileLoseNothing)
{
    RandomTrading market(1);
    std::map<qint64, trading::PaperOrder> told;
    QStringList problems;
    {
        trading::Desk desk;
        ASSERT_EQ(desk.open(path).toStdString(), "");
        QObject::connect(&desk, &trading::Desk::changed, [&](const DeskChange &change) {
            for (const trading::PaperOrder &order : change.orders)
                told[order.id] = order;
        });
        QObject::connect(&desk, &trading::Desk::storageProblemChanged,
                         [&](const QString &problem) { problems.append(problem); });
        desk.openAccount(stockAccount());
        desk.takeInstrument(market.instruments[0]);
        desk.takeQuote(quote(0, at(monday, 10, 0), {{9.99, 500}}, {{10, 500}}, 10));
        const trading::OrderRequest buy{"S1", "600001.SH", feed::Side::Buy, {}, 9.9, 100};
        ASSERT_EQ(desk.submit(buy).order, 1);
        ASSERT_TRUE(QTest::qWaitFor([&] { return desk.isSettled() && told[1].status == feed::OrderStatus::Accepted; }));

        {
            const FileSizeLimit limit(0);
            ASSERT_EQ(desk.submit(buy).order, 2);
            ASSERT_TRUE(QTest::qWaitFor([&] { return !desk.storageProblem().isEmpty(); }));
            EXPECT_EQ(desk.broker().orders().at(2).status, feed::OrderStatus::Rejected);
            EXPECT_EQ(told.count(2), 0u) << "nothing is told before it is stored";
            const trading::PaperBroker::Answer refused = desk.submit(buy);
            EXPECT_EQ(refused.order, 0);
            EXPECT_EQ(refused.refusal.text.toStdString(),
                      "委托无法保存，没有报出。" + text(path, "读写出错（disk I/O error），请检查磁盘和剩余空间"));
            EXPECT_EQ(trading::moneyText(desk.broker().accounts().at("S1").funds().frozen).toStdString(), "995.01");
        }
        ASSERT_TRUE(QTest::qWaitFor([&] { return desk.storageProblem().isEmpty() && desk.isSettled(); }));
        EXPECT_EQ(told[2].status, feed::OrderStatus::Rejected);
        EXPECT_EQ(desk.submit(buy).order, 3);
        ASSERT_TRUE(QTest::qWaitFor([&] { return desk.isSettled() && told[3].status == feed::OrderStatus::Accepted; }));
        ASSERT_EQ(problems.size(), 2);
        EXPECT_EQ(problems[1], QString());
    }
    const DeskState state = loaded(path);
    ASSERT_EQ(state.orders.size(), told.size());
    for (const trading::PaperOrder &order : state.orders)
        EXPECT_EQ(order.status, told[order.id].status) << order.id;
}
