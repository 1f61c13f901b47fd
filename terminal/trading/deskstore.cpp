#include "trading/deskstore.h"

#include "trading/deskrows.h"
#include "trading/deskschema.h"

#include <QtCore/QFileInfo>
#include <QtCore/QUuid>
#include <QtCore/QVariant>
#include <QtSql/QSqlDatabase>
#include <QtSql/QSqlError>
#include <QtSql/QSqlQuery>

namespace trading {

namespace {

QString replaceText(const char *table, const char *columns)
{
    const QString names = QLatin1String(columns);
    QString marks = QStringLiteral("?");
    for (int i = 0; i < names.count(QLatin1Char(',')); ++i)
        marks += QStringLiteral(",?");
    return QStringLiteral("REPLACE INTO %1(%2) VALUES(%3)").arg(QLatin1String(table), names, marks);
}

QString text(const std::string &utf8)
{
    return QString::fromStdString(utf8);
}

} // namespace

/// The prepared writes, made once.
class DeskStore::Statements
{
public:
    explicit Statements(const QSqlDatabase &used)
        : database(used), account(used), order(used), deal(used), position(used), noPosition(used), settlement(used),
          dayClose(used)
    {
    }

    bool prepare()
    {
        return prepare(account,
                       replaceText("account", "id, name, kind, day, initial, balance, day_start, sold_today")) &&
               prepare(order, replaceText("orders", deskrows::orderColumns)) &&
               prepare(deal, replaceText("deals", deskrows::dealColumns)) &&
               prepare(position, replaceText("position", "account, code, side, name, exchange, kind, multiplier,"
                                                         " old_quantity, old_basis, today_quantity, today_basis,"
                                                         " open_cost, last_price")) &&
               prepare(noPosition, QStringLiteral("DELETE FROM position WHERE account=? AND code=? AND side=?")) &&
               prepare(settlement, replaceText("settlement", "account, code, side, day, quantity, price, profit")) &&
               prepare(dayClose, replaceText("day_close", "account, day, balance, equity"));
    }

    bool write(const DeskChange &change)
    {
        const auto all = [this](const auto &rows) {
            for (const auto &row : rows)
                if (!put(row))
                    return false;
            return true;
        };
        return all(change.accounts) && all(change.orders) && all(change.deals) && all(change.positions) &&
               all(change.settlements) && all(change.days);
    }

    bool exec(const char *statement)
    {
        QSqlQuery query(database);
        return query.exec(QLatin1String(statement)) || fail(query);
    }

    QSqlDatabase database;
    QSqlError error;

private:
    bool prepare(QSqlQuery &query, const QString &statement) { return query.prepare(statement) || fail(query); }
    bool run(QSqlQuery &query) { return query.exec() || fail(query); }
    bool fail(const QSqlQuery &query)
    {
        error = query.lastError();
        return false;
    }
    bool runWith(QSqlQuery &query, const QVariantList &values)
    {
        for (int i = 0; i < values.size(); ++i)
            query.bindValue(i, values[i]);
        return run(query);
    }

    bool put(const Account &row)
    {
        return runWith(account, {text(row.id), text(row.name), int(row.kind), row.day, row.initial, row.balance,
                                 row.dayStart, row.soldToday});
    }
    bool put(const PaperOrder &row)
    {
        deskrows::bind(order, row);
        return run(order);
    }
    bool put(const PaperDeal &row)
    {
        deskrows::bind(deal, row);
        return run(deal);
    }
    bool put(const Position &row)
    {
        if (row.quantity() == 0)
            return runWith(noPosition, {text(row.account), text(row.code), int(row.side)});
        return runWith(position, {text(row.account), text(row.code), int(row.side), text(row.name), text(row.exchange),
                                  int(row.kind), row.multiplier, row.old.quantity, row.old.basis, row.today.quantity,
                                  row.today.basis, row.openCost, row.lastPrice});
    }
    bool put(const Settlement &row)
    {
        return runWith(settlement, {text(row.account), text(row.code), int(row.side), row.day, row.quantity, row.price,
                                    row.profit});
    }
    bool put(const DayClose &row) { return runWith(dayClose, {text(row.account), row.day, row.balance, row.equity}); }

    QSqlQuery account;
    QSqlQuery order;
    QSqlQuery deal;
    QSqlQuery position;
    QSqlQuery noPosition;
    QSqlQuery settlement;
    QSqlQuery dayClose;
};

DeskStore::DeskStore() = default;

DeskStore::~DeskStore()
{
    close();
}

void DeskStore::close()
{
    statements.reset();
    lock.reset();
    if (!connection.isEmpty())
        QSqlDatabase::removeDatabase(connection);
    connection.clear();
}

QString DeskStore::problem(const QString &what) const
{
    return QStringLiteral("交易桌面文件 %1：%2").arg(path, what);
}

QString DeskStore::open(const QString &filePath)
{
    close();
    path = filePath;
    const QFileInfo file(path);
    if (file.isDir())
        return problem(QStringLiteral("这是一个文件夹，请换一个文件"));
    if (file.exists() && !file.isWritable())
        return problem(QStringLiteral("文件是只读的，请改为可写或换一个文件"));
    lock = std::make_unique<QLockFile>(path + QStringLiteral(".lock"));
    lock->setStaleLockTime(0); // that its program has ended is found out all the same
    if (!lock->tryLock()) {
        const bool isUsed = lock->error() == QLockFile::LockFailedError;
        lock.reset();
        return problem(isUsed ? QStringLiteral("文件正被另一个终端使用，请先关闭那个终端")
                              : QStringLiteral("打不开或建不了这个文件，请检查文件夹和权限"));
    }
    connection = QUuid::createUuid().toString();
    QString trouble;
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connection);
        database.setDatabaseName(file.absoluteFilePath()); // no name with a meaning of its own, as ":memory:"
        if (!database.open())
            trouble = deskschema::problemText(database.lastError());
        else if (trouble = deskschema::prepare(database); trouble.isEmpty()) {
            statements = std::make_unique<Statements>(database);
            // The log beside the file makes a commit one write, and FULL brings it to the disk before it counts.
            if (!statements->exec("PRAGMA journal_mode = WAL") || !statements->exec("PRAGMA synchronous = FULL") ||
                !statements->prepare())
                trouble = deskschema::problemText(statements->error);
        }
    }
    if (trouble.isEmpty())
        return {};
    close();
    return problem(trouble);
}

QString DeskStore::apply(const std::vector<DeskChange> &changes)
{
    if (!statements)
        return problem(QStringLiteral("文件没有打开"));
    bool isGood = statements->exec("BEGIN IMMEDIATE");
    for (const DeskChange &change : changes)
        isGood = isGood && statements->write(change);
    if (isGood && statements->exec("COMMIT"))
        return {};
    const QString trouble = deskschema::problemText(statements->error);
    statements->exec("ROLLBACK"); // fails where the database has rolled back by itself
    return problem(trouble);
}

} // namespace trading
