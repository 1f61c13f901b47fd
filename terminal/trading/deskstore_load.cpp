// What a desk starts from, read in one go.

#include "trading/deskstore.h"

#include "trading/deskrows.h"
#include "trading/deskschema.h"

#include <QtCore/QVariant>
#include <QtSql/QSqlDatabase>
#include <QtSql/QSqlError>
#include <QtSql/QSqlQuery>

namespace trading {

namespace {

/// Reads the rows of a query one by one.
template <typename Take>
bool readAll(QSqlQuery &query, Take take)
{
    while (query.next())
        take(query);
    return query.lastError().type() == QSqlError::NoError;
}

void readAccount(const QSqlQuery &row, DeskState &state)
{
    Account account;
    account.id = row.value(0).toString().toStdString();
    account.name = row.value(1).toString().toStdString();
    account.kind = static_cast<AccountKind>(row.value(2).toInt());
    account.day = row.value(3).toInt();
    account.initial = row.value(4).toLongLong();
    account.balance = row.value(5).toLongLong();
    account.dayStart = row.value(6).toLongLong();
    account.soldToday = row.value(7).toLongLong();
    state.accounts.push_back(account);
}

void readPosition(const QSqlQuery &row, DeskState &state)
{
    Position position;
    position.account = row.value(0).toString().toStdString();
    position.code = row.value(1).toString().toStdString();
    position.side = static_cast<PositionSide>(row.value(2).toInt());
    position.name = row.value(3).toString().toStdString();
    position.exchange = row.value(4).toString().toStdString();
    position.kind = static_cast<feed::InstrumentKind>(row.value(5).toInt());
    position.multiplier = row.value(6).toInt();
    position.old = {row.value(7).toLongLong(), row.value(8).toLongLong(), 0};
    position.today = {row.value(9).toLongLong(), row.value(10).toLongLong(), 0};
    position.openCost = row.value(11).toLongLong();
    position.lastPrice = row.value(12).toLongLong();
    state.positions.push_back(position);
}

} // namespace

QString DeskStore::load(DeskState &state)
{
    state = {};
    QSqlQuery query(QSqlDatabase::database(connection));
    const auto select = [&query](const QString &statement, const auto &take) {
        return query.exec(statement) && readAll(query, take);
    };
    const auto ofDay = [](const char *columns, const char *table) {
        return QStringLiteral("SELECT %1 FROM %2 JOIN (SELECT id AS owner, day AS present FROM account)"
                              " ON account = owner AND day = present ORDER BY id")
            .arg(QLatin1String(columns), QLatin1String(table));
    };
    const bool isGood =
        select(QStringLiteral("SELECT id, name, kind, day, initial, balance, day_start, sold_today FROM account"),
               [&](const QSqlQuery &row) { readAccount(row, state); }) &&
        select(QStringLiteral("SELECT account, code, side, name, exchange, kind, multiplier, old_quantity, old_basis,"
                              " today_quantity, today_basis, open_cost, last_price FROM position"),
               [&](const QSqlQuery &row) { readPosition(row, state); }) &&
        select(ofDay(deskrows::orderColumns, "orders"),
               [&](const QSqlQuery &row) { deskrows::read(row, state.orders.emplace_back()); }) &&
        select(ofDay(deskrows::dealColumns, "deals"),
               [&](const QSqlQuery &row) { deskrows::read(row, state.deals.emplace_back()); }) &&
        select(QStringLiteral("SELECT max(id) FROM orders"),
               [&](const QSqlQuery &row) { state.lastOrder = row.value(0).toLongLong(); }) &&
        select(QStringLiteral("SELECT max(id) FROM deals"),
               [&](const QSqlQuery &row) { state.lastDeal = row.value(0).toLongLong(); });
    return isGood ? QString() : problem(deskschema::problemText(query.lastError()));
}

} // namespace trading
