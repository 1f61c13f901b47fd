#include "trading/historysearch.h"

#include "trading/deskrows.h"
#include "trading/deskschema.h"

#include <QtCore/QFileInfo>
#include <QtCore/QUuid>
#include <QtSql/QSqlDatabase>
#include <QtSql/QSqlError>
#include <QtSql/QSqlQuery>
#include <algorithm>
#include <utility>

namespace trading {

namespace {

/// Rows that one step looks through: some tens of milliseconds.
constexpr qint64 stepRows = 100'000;
/// Rows that one step sorts: a tenth to a third of a second. More at a time would sort faster, and end later.
constexpr qint64 sortedAtOnce = 250'000;

const char *columnOf(HistoryQuery::Sort sort)
{
    switch (sort) {
    case HistoryQuery::Sort::Code:
        return "code";
    case HistoryQuery::Sort::Price:
        return "price";
    case HistoryQuery::Sort::Quantity:
        return "quantity";
    case HistoryQuery::Sort::Amount:
        return "amount";
    case HistoryQuery::Sort::Day:
        return "day";
    default:
        return "id";
    }
}

} // namespace

HistorySearch::HistorySearch() = default;

HistorySearch::~HistorySearch()
{
    if (!connection.isEmpty())
        QSqlDatabase::removeDatabase(connection);
}

QString HistorySearch::open(const QString &path)
{
    connection = QUuid::createUuid().toString();
    QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connection);
    database.setDatabaseName(QFileInfo(path).absoluteFilePath());
    database.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY;QSQLITE_BUSY_TIMEOUT=5000"));
    if (!database.open())
        return deskschema::problemText(database.lastError());
    QSqlQuery pragma(database);
    // What is found goes to a temporary file: memory stays small however much that is.
    if (!pragma.exec(QStringLiteral("PRAGMA temp_store = FILE")))
        return deskschema::problemText(pragma.lastError());
    return {};
}

bool HistorySearch::run(QSqlQuery &prepared, const QString &statement, const QVariantList &values)
{
    prepared.setForwardOnly(true);
    bool isGood = prepared.prepare(statement);
    for (int i = 0; isGood && i < values.size(); ++i)
        prepared.bindValue(i, values[i]);
    return note(isGood && prepared.exec(), prepared);
}

bool HistorySearch::note(bool isGood, const QSqlQuery &asked)
{
    if (!isGood)
        problem = QStringLiteral("往日记录读不出来：%1").arg(deskschema::problemText(asked.lastError()));
    return isGood;
}

qint64 HistorySearch::number(const QString &statement)
{
    QSqlQuery rows(QSqlDatabase::database(connection));
    return run(rows, statement, {}) && rows.next() ? rows.value(0).toLongLong() : 0;
}

qint64 HistorySearch::lastRow()
{
    return number(QStringLiteral("SELECT max(id) FROM %1").arg(QLatin1String(table())));
}

void HistorySearch::begin(const HistoryQuery &asked)
{
    query = asked;
    problem.clear();
    found = 0;
    top = unscanned = lastRow();
    complete = isDirect();
    adder.begin(query.kind);
    unsummed = complete ? top : 0;
    if (complete)
        return;
    QSqlQuery rows(QSqlDatabase::database(connection));
    keyed = 0;
    taken.clear();
    for (const char *former : {"found", "keyed", "sorted"}) // the last two where a sort did not end
        run(rows, QStringLiteral("DROP TABLE IF EXISTS temp.%1").arg(QLatin1String(former)), {});
    run(rows, QStringLiteral("CREATE TEMP TABLE found(place INTEGER PRIMARY KEY, row INT NOT NULL)"), {});
    if (query.isFiltered() || top <= mostSorted)
        return;
    complete = true;
    problem = QStringLiteral("共 %1 笔，超过 100 万笔不能这样排序，请先筛选").arg(top);
}

QString HistorySearch::condition(QVariantList &values) const
{
    QStringList conditions;
    const auto oneOf = [&](const char *column, const auto &list, const auto &valueOf) {
        if (list.empty())
            return;
        QStringList marks;
        for (const auto &value : list) {
            marks += QStringLiteral("?");
            values += valueOf(value);
        }
        conditions += QStringLiteral("%1 IN (%2)").arg(QLatin1String(column), marks.join(QLatin1Char(',')));
    };
    const auto text = [](const std::string &value) { return QVariant(QString::fromStdString(value)); };
    const auto whole = [](auto value) { return QVariant(int(value)); };
    oneOf("account", query.accounts, text);
    oneOf("code", query.codes, text);
    oneOf("day", query.days, whole);
    oneOf("side", query.sides, whole);
    oneOf("offset", query.offsets, whole);
    if (query.kind == HistoryQuery::Kind::Orders)
        oneOf("status", query.states, whole);
    return conditions.isEmpty() ? QStringLiteral("1") : conditions.join(QStringLiteral(" AND "));
}

/// From the newest to the oldest, so that the newest are there first.
bool HistorySearch::scan(qint64 above, qint64 upTo)
{
    QVariantList values;
    const QString passes = condition(values);
    QSqlQuery rows(QSqlDatabase::database(connection));
    if (!run(rows,
             QStringLiteral("INSERT INTO temp.found(row) SELECT id FROM %1 WHERE %2 AND id > ? AND id <= ?"
                            " ORDER BY id DESC")
                 .arg(QLatin1String(table()), passes),
             values << above << upTo))
        return false;
    const qint64 before = std::exchange(found, found + rows.numRowsAffected());
    return note(adder.addFound(rows, before, found), rows);
}

void HistorySearch::step()
{
    if (complete) {
        const qint64 above = std::max<qint64>(0, unsummed - stepRows);
        QSqlQuery rows(QSqlDatabase::database(connection));
        const bool isGood = unsummed == 0 || note(adder.addRows(rows, above, unsummed), rows);
        unsummed = isGood ? above : 0;
        return;
    }
    if (unscanned > 0) {
        const qint64 above = std::max<qint64>(0, unscanned - stepRows);
        const bool isGood = scan(above, unscanned);
        unscanned = isGood ? above : 0;
        complete = !isGood || (unscanned == 0 && (query.sort == HistoryQuery::Sort::Entry || found == 0));
        return;
    }
    sort();
}

/// Puts what was found in order, in two turns of many steps, since nothing ends a statement that has begun: first the
/// sort keys into a tree, then the rows out of it.
void HistorySearch::sort()
{
    if (found > mostSorted)
        problem = QStringLiteral("找到 %1 笔，超过 100 万笔不能这样排序，请再筛选").arg(found);
    else if (keyed < found)
        addKeys();
    else
        takeSorted();
    complete = complete || !problem.isEmpty();
}

/// Equal keys are told apart by row, the newest first whatever the direction: hence the sign.
void HistorySearch::addKeys()
{
    QSqlQuery rows(QSqlDatabase::database(connection));
    if (keyed == 0 &&
        (!run(rows,
              QStringLiteral("CREATE TEMP TABLE keyed(key, tie INT NOT NULL, PRIMARY KEY(key, tie)) WITHOUT ROWID"),
              {}) ||
         !run(rows, QStringLiteral("CREATE TEMP TABLE sorted(place INTEGER PRIMARY KEY, row INT NOT NULL)"), {})))
        return;
    const qint64 upTo = std::min(found, keyed + sortedAtOnce);
    run(rows,
        QStringLiteral("INSERT INTO temp.keyed SELECT %2, %3 FROM temp.found JOIN %1 ON id = row"
                       " WHERE place > ? AND place <= ? ORDER BY 1, 2")
            .arg(QLatin1String(table()), QLatin1String(columnOf(query.sort)), QLatin1String(tie())),
        {keyed, upTo});
    keyed = upTo;
}

void HistorySearch::takeSorted()
{
    const QString direction = query.isDescending ? QStringLiteral("DESC") : QString();
    const QString order = QStringLiteral("ORDER BY key %1, tie %1").arg(direction);
    QString range = taken.isEmpty()
                        ? QStringLiteral("1")
                        : QStringLiteral("(key, tie) %1 (?, ?)").arg(QLatin1Char(query.isDescending ? '<' : '>'));
    QSqlQuery rows(QSqlDatabase::database(connection));
    if (!run(rows,
             QStringLiteral("SELECT key, tie FROM temp.keyed WHERE %1 %2 LIMIT 1 OFFSET %3")
                 .arg(range, order)
                 .arg(sortedAtOnce - 1),
             taken))
        return;
    QVariantList limits = taken;
    const bool isLast = !rows.next();
    if (!isLast) {
        range += QStringLiteral(" AND (key, tie) %1 (?, ?)").arg(QLatin1String(query.isDescending ? ">=" : "<="));
        taken = {rows.value(0), rows.value(1)};
        limits += taken;
    }
    rows.finish();
    if (!run(rows,
             QStringLiteral("INSERT INTO temp.sorted(row) SELECT %1 FROM temp.keyed WHERE %2 %3")
                 .arg(QLatin1String(query.isDescending ? "tie" : "-tie"), range, order),
             limits) ||
        !isLast)
        return;
    complete = run(rows, QStringLiteral("DROP TABLE temp.found"), {}) &&
               run(rows, QStringLiteral("ALTER TABLE temp.sorted RENAME TO found"), {}) &&
               run(rows, QStringLiteral("DROP TABLE temp.keyed"), {});
}

void HistorySearch::readRows(QSqlQuery &rows, HistoryPage &page)
{
    while (rows.next()) {
        if (query.kind == HistoryQuery::Kind::Orders)
            deskrows::read(rows, page.orders.emplace_back());
        else
            deskrows::read(rows, page.deals.emplace_back());
    }
    note(!rows.lastError().isValid(), rows);
}

HistoryPage HistorySearch::page(qint64 start, int count)
{
    HistoryPage page;
    page.start = std::max<qint64>(0, start);
    page.isComplete = complete;
    page.progress = complete || top == 0 ? 1 : double(top - unscanned) / double(top);
    page.total = isDirect() ? lastRow() : found;
    const QString columns =
        QLatin1String(query.kind == HistoryQuery::Kind::Orders ? deskrows::orderColumns : deskrows::dealColumns);
    QSqlQuery rows(QSqlDatabase::database(connection));
    // Entry in rising order is the found rows from their end.
    const bool isMirrored = query.sort == HistoryQuery::Sort::Entry && !query.isDescending;
    const qint64 last = std::min(page.total, page.start + std::max(0, count));
    const qint64 low = isMirrored ? page.total - last : page.start;
    const qint64 high = isMirrored ? page.total - page.start : last;
    const bool isReadable =
        problem.isEmpty() && low < high && (complete || (query.sort == HistoryQuery::Sort::Entry && !isMirrored));
    if (isReadable && isDirect()) {
        if (run(rows,
                QStringLiteral("SELECT %1 FROM %2 WHERE id > ? AND id <= ? ORDER BY id %3")
                    .arg(columns, QLatin1String(table()), isMirrored ? QString() : QStringLiteral("DESC")),
                {page.total - high, page.total - low}))
            readRows(rows, page);
    } else if (isReadable) {
        if (run(rows,
                QStringLiteral("SELECT %1 FROM temp.found JOIN %2 ON id = row WHERE place > ? AND place <= ?"
                               " ORDER BY place %3")
                    .arg(columns, QLatin1String(table()), isMirrored ? QStringLiteral("DESC") : QString()),
                {low, high}))
            readRows(rows, page);
    }
    page.hasSums = isSummed() && problem.isEmpty();
    page.sums = adder.sums();
    page.problem = problem;
    return page;
}

HistoryChoices HistorySearch::choices()
{
    // From each value straight to the next greater one: the index is not walked through.
    const auto distinct = [this](const QString &column, const QString &where, const QVariantList &values,
                                 const auto &take) {
        QSqlQuery rows(QSqlDatabase::database(connection));
        const QString statement =
            QStringLiteral("WITH RECURSIVE each(value) AS (SELECT min(%1) FROM orders WHERE %2 UNION ALL"
                           " SELECT (SELECT min(%1) FROM orders WHERE %2 AND %1 > value) FROM each"
                           " WHERE value IS NOT NULL) SELECT value FROM each WHERE value IS NOT NULL")
                .arg(column, where);
        if (run(rows, statement, values))
            while (rows.next())
                take(rows.value(0));
    };
    HistoryChoices choices;
    const QString any = QStringLiteral("1");
    distinct(QStringLiteral("account"), any, {},
             [&](const QVariant &value) { choices.accounts.push_back(value.toString().toStdString()); });
    distinct(QStringLiteral("code"), any, {},
             [&](const QVariant &value) { choices.codes.push_back(value.toString().toStdString()); });
    for (const std::string &account : choices.accounts) {
        const QString id = QString::fromStdString(account);
        distinct(QStringLiteral("day"), QStringLiteral("account = ?"), {id, id},
                 [&](const QVariant &value) { choices.days.push_back(value.toInt()); });
    }
    std::sort(choices.days.begin(), choices.days.end());
    choices.days.erase(std::unique(choices.days.begin(), choices.days.end()), choices.days.end());
    return choices;
}

} // namespace trading
