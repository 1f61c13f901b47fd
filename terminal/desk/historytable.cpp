#include "desk/historytable.h"

#include <algorithm>
#include <limits>

#include "kdservice/typemanager.h"
#include "model/chpfdatamodel.h"
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
    bool isFilter;
};
const FieldUse fieldUses[] = {
    {OrderNumber, DealNumber, HistoryQuery::Sort::Entry, false},
    {OrderDay, DealDay, HistoryQuery::Sort::Day, true},
    {OrderCode, DealCode, HistoryQuery::Sort::Code, true},
    {OrderPrice, DealPrice, HistoryQuery::Sort::Price, false},
    {OrderQuantity, DealQuantity, HistoryQuery::Sort::Quantity, false},
    {OrderAmount, DealAmount, HistoryQuery::Sort::Amount, false},
};
const int filterFields[] = {OrderDay,       DealDay,       OrderCode,   DealCode,   OrderAccount, DealAccount,
                            OrderDirection, DealDirection, OrderOffset, DealOffset, OrderStatus};

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
                        kdservice::TraderStock, /* paged */ true)
{
    query.kind = kind;
    getDataModel()->setAppendSeq(true);
    for (int column = 0; column < getDataModel()->columnCount(); ++column) {
        // Sums would be those of a page only.
        getDataModel()->setColumnStatEnable(column, false);
        setColumnFilterable(column, std::count(std::begin(filterFields), std::end(filterFields), fieldOf(column)) > 0);
    }
    setEmptyText(QStringLiteral("没有交易桌面文件：用 --desk 指定一个，往日的委托和成交就在这里"));
}

HistoryTable::~HistoryTable() = default;

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
    connect(reader.get(), &trading::HistoryReader::pageRead, this, &HistoryTable::take, Qt::QueuedConnection);
    connect(
        reader.get(), &trading::HistoryReader::choicesRead, this,
        [this](const trading::HistoryChoices &found) { choices = found; }, Qt::QueuedConnection);
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
        getDataModel()->clear();
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
    if (!columnFilterable(column) || (type != ZB::FilterExact && type != ZB::FilterContains))
        return;
    if (values.isEmpty())
        filters.remove(column);
    else
        filters[column] = {ZB::EFilterType(type), values};
    applyFilters();
}

QMap<int, ZB::IBaseHpfTableModel::ColumnFilter> HistoryTable::columnFilters() const
{
    return filters;
}

void HistoryTable::clearFilter()
{
    filters.clear();
    KV::CHpfDataTable::clearFilter();
    applyFilters();
}

QVector<HistoryTable::Choice> HistoryTable::enumeration(const char *name) const
{
    QVector<Choice> all;
    for (int code = 0; code < 128; ++code) {
        const QString text = kdservice::TypeManager::instance()->getEnumItemName(name, code, tradeType());
        if (!text.isEmpty())
            all.append({text, code});
    }
    return all;
}

QVector<HistoryTable::Choice> HistoryTable::choicesOf(int column) const
{
    QVector<Choice> all;
    const auto texts = [&all](const std::vector<std::string> &values) {
        for (const std::string &value : values)
            all.append({QString::fromStdString(value), QString::fromStdString(value)});
    };
    switch (fieldOf(column)) {
    case OrderAccount:
    case DealAccount:
        texts(choices.accounts);
        return all;
    case OrderCode:
    case DealCode:
        texts(choices.codes);
        return all;
    case OrderDay:
    case DealDay:
        for (const int day : choices.days)
            all.append({QString::number(day), day});
        return all;
    case OrderDirection:
    case DealDirection:
        return enumeration("direction");
    case OrderOffset:
    case DealOffset:
        return enumeration("offset");
    case OrderStatus:
        return enumeration("orderstatus");
    default:
        return all;
    }
}

QStringList HistoryTable::getMenuItems(int column)
{
    QStringList items;
    for (const Choice &choice : choicesOf(column))
        items += choice.first;
    for (const QString &chosen : filters.value(column).second)
        if (filters[column].first == ZB::FilterExact && !items.contains(chosen))
            items += chosen;
    return items;
}

/// A filter becomes the list of the file's values that it lets pass; one value that no row has, where it lets none.
void HistoryTable::applyFilters()
{
    HistoryQuery wanted;
    wanted.kind = query.kind;
    wanted.sort = query.sort;
    wanted.isDescending = query.isDescending;
    for (auto filter = filters.constBegin(); filter != filters.constEnd(); ++filter) {
        const bool isExact = filter->first == ZB::FilterExact;
        const auto passes = [&](const QString &text) {
            if (isExact)
                return filter->second.contains(text);
            return std::any_of(filter->second.begin(), filter->second.end(),
                               [&](const QString &part) { return text.contains(part, Qt::CaseInsensitive); });
        };
        QVariantList values;
        for (const Choice &choice : choicesOf(filter.key()))
            if (passes(choice.first))
                values += choice.second;
        const auto fill = [&](auto &list, const auto &valueOf) {
            for (const QVariant &value : qAsConst(values))
                list.push_back(valueOf(value));
            if (list.empty())
                list.push_back({});
        };
        const auto text = [](const QVariant &value) { return value.toString().toStdString(); };
        const auto code = [](const QVariant &value) { return char(value.toInt()); };
        switch (fieldOf(filter.key())) {
        case OrderAccount:
        case DealAccount:
            fill(wanted.accounts, text);
            break;
        case OrderCode:
        case DealCode:
            fill(wanted.codes, text);
            break;
        case OrderDay:
        case DealDay:
            fill(wanted.days, [](const QVariant &value) { return value.toInt(); });
            break;
        case OrderDirection:
        case DealDirection:
            fill(wanted.sides, code);
            break;
        case OrderOffset:
        case DealOffset:
            fill(wanted.offsets, code);
            break;
        default:
            fill(wanted.states, code);
        }
    }
    query = wanted;
    start = 0;
    ask(false);
    updateTable();
}

} // namespace terminal
