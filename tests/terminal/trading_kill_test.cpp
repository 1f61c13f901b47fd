#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>
#include <QtCore/QVariant>
#include <QtSql/QSqlDatabase>
#include <QtSql/QSqlQuery>
#include <gtest/gtest.h>
#include <iterator>
#include <map>
#include <random>
#include <sstream>

#include "trading/deskstore.h"
#include "trading_support.h"

using namespace tradingtest;

namespace {

/// Starts a desk, lets it trade for a random while, kills it, and reads what it had said until then: the words behind
/// the number of every order and deal, as told last.
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
        QList<QByteArray> lines = process.readAllStandardOutput().split('\n');
        lines.removeLast(); // empty, or cut in the middle
        for (const QByteArray &line : lines) {
            const int number = line.indexOf(' ') + 1;
            const int rest = line.indexOf(' ', number) + 1;
            (line.startsWith("order") ? orders : deals)[line.mid(number, rest - number - 1).toLongLong()] =
                line.mid(rest).toStdString();
        }
    }

    bool killed = false;
    std::map<qint64, std::string> orders;
    std::map<qint64, std::string> deals;
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

    /// The values of all rows, row by row, separated by blanks; a line each.
    std::string rows(const QString &statement) const
    {
        QSqlQuery query(QSqlDatabase::database(name()));
        EXPECT_TRUE(query.exec(statement)) << statement.toStdString();
        std::string text;
        while (query.next()) {
            for (int i = 0; query.value(i).isValid() && i < 8; ++i)
                text += (i > 0 ? " " : "") + query.value(i).toString().toStdString();
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
    EXPECT_EQ(file.rows(QStringLiteral("PRAGMA integrity_check")), "ok\n");
    EXPECT_EQ(file.rows(QStringLiteral("SELECT id, filled, amount, commission + stamp_duty + transfer_fee FROM orders"
                                       " WHERE filled > 0 ORDER BY id")),
              file.rows(QStringLiteral(
                  "SELECT order_id, sum(quantity), sum(amount), sum(commission + stamp_duty + transfer_fee)"
                  " FROM deals GROUP BY order_id ORDER BY order_id")));
    EXPECT_EQ(
        file.rows(QStringLiteral("SELECT balance - initial FROM account WHERE id = 'S1'")),
        file.rows(QStringLiteral("SELECT ifnull(sum(CASE side WHEN 49 THEN amount ELSE -amount END"
                                 " - commission - stamp_duty - transfer_fee), 0) FROM deals WHERE account = 'S1'")));
    EXPECT_EQ(
        file.rows(QStringLiteral("SELECT balance - initial FROM account WHERE id = 'F1'")),
        file.rows(QStringLiteral("SELECT (SELECT ifnull(sum(realised - commission), 0) FROM deals WHERE account = 'F1')"
                                 " + (SELECT ifnull(sum(profit), 0) FROM settlement WHERE account = 'F1')")));
    EXPECT_EQ(file.rows(QStringLiteral(
                  "SELECT code, sum(CASE side WHEN 48 THEN 1 ELSE -1 END * (old_quantity + today_quantity))"
                  " AS net FROM position GROUP BY code HAVING net <> 0 ORDER BY code")),
              file.rows(QStringLiteral(
                  "SELECT code, sum(CASE side WHEN 48 THEN quantity ELSE -quantity END) AS net FROM deals"
                  " GROUP BY code HAVING net <> 0 ORDER BY code")));
    EXPECT_EQ(file.rows(QStringLiteral("SELECT count(*) FROM orders")),
              file.rows(QStringLiteral("SELECT ifnull(max(id), 0) FROM orders")))
        << "dense numbers";
    EXPECT_EQ(file.rows(QStringLiteral("SELECT count(*) FROM deals")),
              file.rows(QStringLiteral("SELECT ifnull(max(id), 0) FROM deals")));
}

std::vector<std::string> words(const std::string &line)
{
    std::istringstream stream(line);
    return {std::istream_iterator<std::string>(stream), {}};
}

/// A deal is stored as it was told. So is an order; one that was open may have got on since.
void expectStored(const File &file, const Victim &victim)
{
    for (const auto &[id, told] : victim.deals)
        EXPECT_EQ(
            file.rows(QStringLiteral("SELECT order_id, price, quantity, amount FROM deals WHERE id = %1").arg(id)),
            told + '\n')
            << "deal " << id;
    for (const auto &[id, told] : victim.orders) {
        const std::string stored = file.rows(
            QStringLiteral("SELECT price, quantity, account, status, filled, cancelled FROM orders WHERE id = %1")
                .arg(id));
        const auto isOpen = [](const std::vector<std::string> &words) {
            return words.at(3) == "49" || words.at(3) == "50" || words.at(3) == "55"; // sent, accepted, filled in part
        };
        const std::vector<std::string> before = words(told);
        const std::vector<std::string> after = words(stored);
        if (stored == told + '\n')
            continue;
        ASSERT_TRUE(isOpen(before)) << "order " << id << " told " << told << " stored " << stored;
        ASSERT_EQ(after.size(), before.size()) << "order " << id << " is not stored";
        EXPECT_TRUE(std::equal(before.begin(), before.begin() + 3, after.begin())) << told << " stored " << stored;
        EXPECT_LE(std::stoll(before[4]), std::stoll(after[4])) << id;
        EXPECT_TRUE(before[3] == "49" || after[3] != "49") << id;
    }
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
    QDate date(2024, 3, 18);
    for (int kill = 0; kill < kills && !testing::Test::HasFailure(); ++kill) {
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
        const File file(path);
        expectStored(file, victim);
        expectReconciled(file);
        if (kill % 3 == 2) // some days go on after a restart
            date = date.addDays(date.dayOfWeek() == 5 ? 3 : 1);
    }
    EXPECT_GT(told, size_t(kills) * 5);
}
