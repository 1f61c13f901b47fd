#include "desk/historytable.h"

#include <algorithm>
#include <boost/make_shared.hpp>
#include <limits>

#include "desk/historyrows.h"
#include "records/fieldids.h"
#include "records/typecatalogue.h"
#include "trading/historyreader.h"
#include "zb/etableflag.h"
#include "zb/numberformat.h"

namespace terminal {

namespace {

using namespace refhost;
using trading::HistoryQuery;

constexpr int pageEvent = 277;

/// Which part of a query a field is, for orders and for deals.
struct FieldUse
{
    int orderField;
    int dealField;
    HistoryQuery::Sort sort;
};
const FieldUse fieldUses[] = {
    {OrderNumber, DealNumber, HistoryQuery::Sort::Entry},
    {OrderDay, DealDay, HistoryQuery::Sort::Day},
    {OrderCode, DealCode, HistoryQuery::Sort::Code},
    {OrderPrice, DealPrice, HistoryQuery::Sort::Price},
    {OrderQuantity, DealQuantity, HistoryQuery::Sort::Quantity},
    {OrderAmount, DealAmount, HistoryQuery::Sort::Amount},
};
const FieldUse *useOf(int field)
{
    const auto *found = std::find_if(std::begin(fieldUses), std::end(fieldUses), [field](const FieldUse &use) {
        return use.orderField == field || use.dealField == field;
    });
    return found == std::end(fieldUses) ? nullptr : found;
}

} // namespace

HistoryTable::HistoryTable(int tableId, HistoryQuery::Kind kind, QWidget *parent)
    : KV::CHpfDataTable(tableId, kind == HistoryQuery::Kind::Orders ? MetaOwnOrder : MetaOwnDeal, parent,
                        kdservice::TraderStock, /* paged */ true),
      rows(boost::make_shared<HistoryRows>(getDataModel()->getMetaID()))
{
    setDataModel(rows.get());
    query.kind = kind;
    rows->setAppendSeq(true);
    for (int column = 0; column < rows->columnCount(); ++column)
        setColumnFilterable(column, HistoryFilters::canFilter(fieldOf(column)));
    setEmptyText(QStringLiteral("没有交易桌面文件：用 --desk 指定一个，往日的委托和成交就在这里"));
}

HistoryTable::~HistoryTable()
{
    saveSettingsNow();
}

/// 0 for a column without a field.
int HistoryTable::fieldOf(int column) const
{
    const kdservice::FieldDes *field = getDataModel()->columnFieldDesMap().value(column);
    return field ? field->fieldId : 0;
}

void HistoryTable::open(const QString &path)
{
    setEmptyText(QStringLiteral("没有往日记录"));
    reader = std::make_unique<trading::HistoryReader>(path);
    connect(reader.get(), &trading::HistoryReader::pageRead, this, &HistoryTable::take);
    connect(reader.get(), &trading::HistoryReader::choicesRead, this, &HistoryTable::takeChoices);
}

void HistoryTable::renew()
{
    ask(true);
}

void HistoryTable::ask(bool anew)
{
    if (!reader)
        return;
    ++asked;
    reader->ask(query, start, count, anew);
    Q_EMIT stateChanged();
}

void HistoryTable::take(qint64 number, const trading::HistoryPage &page)
{
    if (number != asked)
        return; // something else is wanted by now
    answered = number;
    last = page;
    last.orders.clear();
    last.deals.clear();
    std::vector<RecordPtr> made;
    for (const trading::PaperOrder &order : page.orders)
        made.push_back(records.orderRecord(order));
    for (const trading::PaperDeal &deal : page.deals)
        made.push_back(records.dealRecord(deal));
    setEmptyText(!page.problem.isEmpty() ? page.problem
                 : page.isComplete       ? QStringLiteral("没有符合条件的往日记录")
                                         : QStringLiteral("正在查找"));
    rows->takeSums(page);
    show(made);
    setTotalCount(int(std::min<qint64>(page.total, std::numeric_limits<int>::max())));
    updateTable();
    Q_EMIT stateChanged();
}

/// The same rows in the same order change in place, so that a selection survives.
void HistoryTable::show(const std::vector<RecordPtr> &made)
{
    std::vector<std::string> keys;
    for (const RecordPtr &record : made)
        keys.push_back(record->getKey());
    if (keys != shownKeys)
        rows->clear();
    shownKeys = std::move(keys);
    updateDatas(made, /* redraw */ false);
}

QString HistoryTable::stateText() const
{
    if (!reader)
        return QStringLiteral("没有交易桌面文件");
    if (!last.problem.isEmpty())
        return last.problem;
    const QString found = ZB::formatLonglongNumber(last.total, 0, utils::FormatGroupDigits);
    if (asked == 0 || (answered == asked && last.isComplete))
        return QStringLiteral("%1 笔").arg(found);
    return answered == asked ? QStringLiteral("正在查找 %1%，已找到 %2 笔").arg(int(100 * last.progress)).arg(found)
                             : QStringLiteral("正在查找");
}

bool HistoryTable::handleEvent(int event, int first, int second, QString text, void *payload)
{
    if (event != pageEvent)
        return KV::CHpfDataTable::handleEvent(event, first, second, text, payload);
    start = second;
    count = text.toInt();
    ask(false);
    return true;
}

/// The newest stand first unless the user wants it otherwise. Columns that the file cannot order by keep the order that
/// there is.
void HistoryTable::setSortColumns(const QVector<QPair<int, int>> &columns)
{
    if (columns.isEmpty()) {
        query.sort = HistoryQuery::Sort::Entry;
        query.isDescending = true;
        KV::CHpfDataTable::setSortColumns({});
        return ask(false);
    }
    const QPair<int, int> wanted = columns.last();
    const FieldUse *use = useOf(fieldOf(wanted.first));
    if (!use)
        return;
    query.sort = use->sort;
    query.isDescending = wanted.second != 0;
    KV::CHpfDataTable::setSortColumns({wanted});
    ask(false);
}

void HistoryTable::onFilterTrigger(int column, int type, QSet<QString> &values)
{
    if (!columnFilterable(column) || !ZB::isFilterType(type))
        return;
    filters.set(fieldOf(column), ZB::EFilterType(type), values);
    settingsChanged();
    applyFilters();
}

/// The file keeps one condition of a column.
bool HistoryTable::restoreFilter(int column, const ZB::FilterConditions &conditions)
{
    return conditions.size() < 2 && ZB::CBaseHighPerformanceTable::restoreFilter(column, conditions);
}

QMap<int, ZB::FilterConditions> HistoryTable::columnFilters() const
{
    QMap<int, ZB::FilterConditions> byColumn;
    for (auto filter = filters.all().constBegin(); filter != filters.all().constEnd(); ++filter)
        byColumn[getColumnIdByFileId(filter.key())] = {*filter};
    return byColumn;
}

QStringList HistoryTable::getMenuItems(int column)
{
    return filters.menu(fieldOf(column));
}

void HistoryTable::clearFilter()
{
    filters.clear();
    KV::CHpfDataTable::clearFilter();
    applyFilters();
}

HistoryQuery HistoryTable::filteredQuery() const
{
    HistoryQuery wanted;
    wanted.kind = query.kind;
    wanted.sort = query.sort;
    wanted.isDescending = query.isDescending;
    filters.putInto(wanted);
    return wanted;
}

/// A filter that was saved, or that leaves values out, may let others pass now.
void HistoryTable::takeChoices(const trading::HistoryChoices &found)
{
    filters.setChoices(found);
    if (filteredQuery() != query)
        applyFilters();
}

void HistoryTable::applyFilters()
{
    query = filteredQuery();
    start = 0;
    ask(false);
    updateTable();
}

} // namespace terminal
