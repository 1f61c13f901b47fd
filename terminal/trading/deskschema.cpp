#include "trading/deskschema.h"

#include <QtCore/QVariant>
#include <QtSql/QSqlDatabase>
#include <QtSql/QSqlError>
#include <QtSql/QSqlQuery>

namespace trading::deskschema {

namespace {

constexpr int applicationId = 0x44455348; ///< tells desk files from other databases

const char *const tables[] = {
    "CREATE TABLE account(id TEXT PRIMARY KEY, name TEXT NOT NULL, kind INT NOT NULL, day INT NOT NULL,"
    " initial INT NOT NULL, balance INT NOT NULL, day_start INT NOT NULL, sold_today INT NOT NULL) WITHOUT ROWID",

    "CREATE TABLE position(account TEXT NOT NULL, code TEXT NOT NULL, side INT NOT NULL, name TEXT NOT NULL,"
    " exchange TEXT NOT NULL, kind INT NOT NULL, multiplier INT NOT NULL, old_quantity INT NOT NULL,"
    " old_basis INT NOT NULL, today_quantity INT NOT NULL, today_basis INT NOT NULL, open_cost INT NOT NULL,"
    " last_price INT NOT NULL DEFAULT 0, PRIMARY KEY(account, code, side)) WITHOUT ROWID",

    "CREATE TABLE orders(id INTEGER PRIMARY KEY, account TEXT NOT NULL, code TEXT NOT NULL, name TEXT NOT NULL,"
    " exchange TEXT NOT NULL, day INT NOT NULL, side INT NOT NULL, offset INT NOT NULL, price INT NOT NULL,"
    " quantity INT NOT NULL, cancelled INT NOT NULL, filled INT NOT NULL, amount INT NOT NULL,"
    " filled_today INT NOT NULL, amount_today INT NOT NULL, commission INT NOT NULL, stamp_duty INT NOT NULL,"
    " transfer_fee INT NOT NULL, held_old INT NOT NULL, held_today INT NOT NULL, status INT NOT NULL,"
    " entry_time INT NOT NULL, update_time INT NOT NULL, remark TEXT NOT NULL)",

    "CREATE TABLE deals(id INTEGER PRIMARY KEY, order_id INT NOT NULL, account TEXT NOT NULL, code TEXT NOT NULL,"
    " name TEXT NOT NULL, exchange TEXT NOT NULL, day INT NOT NULL, side INT NOT NULL, offset INT NOT NULL,"
    " price INT NOT NULL, quantity INT NOT NULL, amount INT NOT NULL, commission INT NOT NULL,"
    " stamp_duty INT NOT NULL, transfer_fee INT NOT NULL, realised INT NOT NULL, time INT NOT NULL)",

    "CREATE TABLE settlement(account TEXT NOT NULL, code TEXT NOT NULL, side INT NOT NULL, day INT NOT NULL,"
    " quantity INT NOT NULL, price INT NOT NULL, profit INT NOT NULL)",

    "CREATE TABLE day_close(account TEXT NOT NULL, day INT NOT NULL, balance INT NOT NULL, equity INT NOT NULL)",

    // A day of an account is what a start of the program reads; a code or a day is what the history is filtered by.
    "CREATE INDEX orders_of_day ON orders(account, day)",
    "CREATE INDEX orders_of_code ON orders(code)",
    "CREATE INDEX deals_of_day ON deals(account, day)",
    "CREATE INDEX deals_of_code ON deals(code)",
};

/// What the tables of version 1 lack.
const char *const sinceVersion1[] = {
    "ALTER TABLE position ADD COLUMN last_price INT NOT NULL DEFAULT 0",
};

/// A number that a pragma answers with; empty with the error's text on failure.
QVariant pragma(QSqlDatabase &database, const QString &name, QString &problem)
{
    QSqlQuery query(database);
    if (!query.exec(QStringLiteral("PRAGMA ") + name) || !query.next()) {
        problem = problemText(query.lastError());
        return {};
    }
    return query.value(0);
}

/// Runs the statements, and notes the version that they make; all or none of it.
template <typename Statements>
QString change(QSqlDatabase &database, const Statements &statements)
{
    QSqlQuery query(database);
    if (!query.exec(QStringLiteral("BEGIN IMMEDIATE")))
        return problemText(query.lastError());
    bool isGood = true;
    for (const char *statement : statements)
        isGood = isGood && query.exec(QLatin1String(statement));
    isGood = isGood && query.exec(QStringLiteral("PRAGMA application_id = %1").arg(applicationId)) &&
             query.exec(QStringLiteral("PRAGMA user_version = %1").arg(version)) &&
             query.exec(QStringLiteral("COMMIT"));
    if (isGood)
        return {};
    const QString problem = problemText(query.lastError());
    query.exec(QStringLiteral("ROLLBACK"));
    return problem;
}

/// The tables that a start of the program rests on; the long ones are read later, piece by piece.
QString checkTables(QSqlDatabase &database)
{
    for (const char *table : {"account", "position"}) {
        QString problem;
        const QVariant answer = pragma(database, QStringLiteral("quick_check(%1)").arg(QLatin1String(table)), problem);
        if (!problem.isEmpty())
            return problem;
        if (answer.toString() != QLatin1String("ok"))
            return QStringLiteral("文件已损坏（%1），请用备份恢复或换一个文件").arg(answer.toString());
    }
    return {};
}

} // namespace

QString problemText(const QSqlError &error)
{
    // SQLite's primary result codes; extended ones carry them in the low byte.
    switch (error.nativeErrorCode().toInt() & 0xff) {
    case 5:
    case 6:
        return QStringLiteral("文件正被另一个程序使用，请先关闭那个程序");
    case 8:
        return QStringLiteral("文件是只读的，请改为可写或换一个文件");
    case 10:
        return QStringLiteral("读写出错（%1），请检查磁盘和剩余空间").arg(error.databaseText());
    case 11:
        return QStringLiteral("文件已损坏（%1），请用备份恢复或换一个文件").arg(error.databaseText());
    case 13:
        return QStringLiteral("磁盘已满，请清理出空间");
    case 14:
        return QStringLiteral("打不开或建不了这个文件，请检查文件夹和权限");
    case 26:
        return QStringLiteral("这不是交易桌面文件，请换一个文件");
    default:
        return QStringLiteral("出错（%1），请用备份恢复或换一个文件")
            .arg(error.databaseText().isEmpty() ? error.driverText() : error.databaseText());
    }
}

QString prepare(QSqlDatabase &database)
{
    QString problem;
    const int found = pragma(database, QStringLiteral("user_version"), problem).toInt();
    const int owner = problem.isEmpty() ? pragma(database, QStringLiteral("application_id"), problem).toInt() : 0;
    const int pages = problem.isEmpty() ? pragma(database, QStringLiteral("page_count"), problem).toInt() : 0;
    if (!problem.isEmpty())
        return problem;
    if (pages > 0 && owner != applicationId)
        return QStringLiteral("这不是交易桌面文件，请换一个文件");
    if (found > version)
        return QStringLiteral("文件由更新版本的程序写成（格式 %1，本程序只认到 %2），请升级程序或换一个文件")
            .arg(found)
            .arg(version);
    if (pages == 0)
        return change(database, tables);
    const QString damage = checkTables(database);
    return damage.isEmpty() && found < version ? change(database, sinceVersion1) : damage;
}

} // namespace trading::deskschema
