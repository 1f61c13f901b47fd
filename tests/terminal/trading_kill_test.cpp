#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>
#include <QtCore/QVariant>
#include <QtSql/QSqlDatabase>
#include <QtSql/QSqlQuery>
#include <gtest/gtest.h>
#include <map>
#include <random>

#include "trading/deskstore.h"
#include "trading_support.h"

using namespace tradingtest;

namespace {

/// What a desk has told its user of an order.
struct Told
{
    qint64 filled = 0;
    qint64 cancelled = 0;
    char status = 0;
};

/// Starts a desk, lets it trade for a random while, kills it, and reads what it had said until then.
class Victim
{
public:
    Victim(const QString &file, unsigned seed, int day, int milliseconds)
    {
        QProcess process;
        process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process.start(QStringLiteral(TRADING_VICTIM), {file, QString::number(seed), QString::number(day)});
        if (!process.waitForReadyRead(30000))
            return;
        process.waitForFinished(milliseconds);
        process.kill(); // cannot be caught
        process.waitForFinished();
        killed = process.exitStatus() == QProcess::CrashExit;
        for (const QByteArray &line : process.readAllStandardOutput().split('\n'))
            take(line.split(' '));
    }

    bool killed = false;
    std::map<qint64, Told> orders;
    qint64 lastDeal = 0;

private:
    void take(const QList<QByteArray> &words)
    {
        if (words.size() == 5 && words[0] == "order" && words[4].size() == 1)
            orders[words[1].toLongLong()] = {words[2].toLongLong(), words[3].toLongLong(), words[4][0]};
        else if (words.size() == 2 && words[0] == "deal")
            lastDeal = std::max(lastDeal, words[1].toLongLong());
    }
};

/// Questions to the desk file that go past the program.
class File
{
public:
    explicit File(const QString &path)
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name());
        database.setDatabaseName(path);
        EXPECT_TRUE(database.open());
    }
    ~File() { QSqlDatabase::removeDatabase(name()); }

    /// The numbers of all rows, row by row, separated by blanks; a line each.
    std::string rows(const char *statement) const
    {
        QSqlQuery query(QSqlDatabase::database(name()));
        EXPECT_TRUE(query.exec(QLatin1String(statement))) << statement;
        std::string text;
        while (query.next()) {
            for (int i = 0; query.value(i).isValid() && i < 8; ++i)
                text += query.value(i).toString().toStdString() + ' ';
            text += '\n';
        }
        return text;
    }

private:
    static QString name() { return QStringLiteral("kill-test"); }
};

/// Sums that must be the same, taken from different tables.
void expectReconciled(const File &file)
{
    EXPECT_EQ(file.rows("PRAGMA integrity_check"), "ok \n");
    EXPECT_EQ(file.rows("SELECT id, filled, amount, commission + stamp_duty + transfer_fee FROM orders"
                        " WHERE filled > 0 ORDER BY id"),
              file.rows("SELECT order_id, sum(quantity), sum(amount), sum(commission + stamp_duty + transfer_fee)"
                        " FROM deals GROUP BY order_id ORDER BY order_id"));
    EXPECT_EQ(file.rows("SELECT balance - initial FROM account WHERE id = 'S1'"),
              file.rows("SELECT ifnull(sum(CASE side WHEN 49 THEN amount ELSE -amount END"
                        " - commission - stamp_duty - transfer_fee), 0) FROM deals WHERE account = 'S1'"));
    EXPECT_EQ(file.rows("SELECT balance - initial FROM account WHERE id = 'F1'"),
              file.rows("SELECT (SELECT ifnull(sum(realised - commission), 0) FROM deals WHERE account = 'F1')"
                        " + (SELECT ifnull(sum(profit), 0) FROM settlement WHERE account = 'F1')"));
    EXPECT_EQ(file.rows("SELECT code, sum(CASE side WHEN 48 THEN 1 ELSE -1 END * (old_quantity + today_quantity))"
                        " AS net FROM position GROUP BY code HAVING net <> 0 ORDER BY code"),
              file.rows("SELECT code, sum(CASE side WHEN 48 THEN quantity ELSE -quantity END) AS net FROM deals"
                        " GROUP BY code HAVING net <> 0 ORDER BY code"));
    EXPECT_EQ(file.rows("SELECT count(*) FROM orders"), file.rows("SELECT max(id) FROM orders")) << "dense numbers";
    EXPECT_EQ(file.rows("SELECT count(*) FROM deals"), file.rows("SELECT max(id) FROM deals"));
}

} // namespace

/// DESK_KILLS=100 kills as often as that.
TEST(TradingKill, NothingThatWasToldIsLostWhenTheProgramIsKilled)
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("desk.db"));
    const int kills = qEnvironmentVariableIsSet("DESK_KILLS") ? qEnvironmentVariableIntValue("DESK_KILLS") : 5;
    const unsigned seed = std::random_device()();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 numbers(seed);
    size_t told = 0;
    qint64 before = 0;
    QDate date(2024, 3, 18);
    for (int kill = 0; kill < kills; ++kill) {
        SCOPED_TRACE("kill " + std::to_string(kill));
        const int day = date.toString(QStringLiteral("yyyyMMdd")).toInt();
        const Victim victim(path, unsigned(numbers()), day, int(numbers() % 300));
        ASSERT_TRUE(victim.killed);
        told += victim.orders.size();

        trading::DeskStore store;
        trading::DeskState state;
        ASSERT_EQ(store.open(path).toStdString(), "");
        ASSERT_EQ(store.load(state).toStdString(), "");
        EXPECT_TRUE(trading::PaperBroker().restore(state));
        EXPECT_GE(state.lastOrder, before) << "earlier days stay";
        before = state.lastOrder;
        EXPECT_GE(state.lastDeal, victim.lastDeal);
        std::map<qint64, trading::PaperOrder> stored;
        for (const trading::PaperOrder &order : state.orders)
            stored[order.id] = order;
        for (const auto &[id, order] : victim.orders) {
            if (stored.count(id) == 0)
                continue; // of the day before, ended by the new one
            EXPECT_GE(stored[id].filled.quantity, order.filled) << id;
            EXPECT_GE(stored[id].cancelled, order.cancelled) << id;
            EXPECT_TRUE(order.status == '1' || char(stored[id].status) != '1') << id;
        }
        EXPECT_TRUE(victim.orders.empty() || state.lastOrder >= victim.orders.rbegin()->first);
        expectReconciled(File(path));
        if (kill % 3 == 2) // some days go on after a restart
            date = date.addDays(date.dayOfWeek() == 5 ? 3 : 1);
    }
    EXPECT_GT(told, size_t(kills) * 5);
}
