#include "zb/ibasehpftablemodel.h"

#include <limits>

#include "table/filterconditions.h"
#include "table/hpfmodelcolumn.h"
#include "table/hpfmodelstate.h"

namespace ZB {

namespace {

int compareBy(const HpfModelColumn &column, bool descending, IBaseHpfTableData &a, IBaseHpfTableData &b)
{
    QString textA;
    QString textB;
    const quint64 keyA = column.sortKey(a, descending, textA);
    const quint64 keyB = column.sortKey(b, descending, textB);
    if (keyA != keyB)
        return keyA < keyB ? -1 : 1;
    const int byText = textA.compare(textB);
    return descending ? -byText : byText;
}

} // namespace

IBaseHpfTableModel::IBaseHpfTableModel(bool appendSeq) : state(std::make_unique<HpfModelState>(*this, appendSeq)) {}

IBaseHpfTableModel::~IBaseHpfTableModel() = default;

bool IBaseHpfTableModel::addData(const Row &row)
{
    return updateData(row);
}

bool IBaseHpfTableModel::updateData(const Row &row)
{
    const HpfModelState::PutResult result = state->put(row);
    if (result == HpfModelState::PutResult::Refused)
        return false;
    if (result == HpfModelState::PutResult::Added)
        _addData(row);
    else
        _updateData(row);
    setUpdated(true);
    return true;
}

void IBaseHpfTableModel::updateDatas(const QVector<Row> &rows)
{
    updateDatas(rows, nullptr);
}

void IBaseHpfTableModel::updateDatas(const QVector<Row> &rows, const std::function<bool(int)> &goOn)
{
    if (rows.isEmpty())
        return;
    const auto tell = [this](const Row &row, HpfModelState::PutResult result) {
        if (result == HpfModelState::PutResult::Added)
            _addData(row);
        else
            _updateData(row);
    };
    state->putAll(rows, tell, goOn);
    setUpdated(true);
}

void IBaseHpfTableModel::removeDataByKey(const std::string &key)
{
    if (state->remove(&key, 1) > 0)
        setUpdated(true);
}

void IBaseHpfTableModel::removeDatasByKey(const QVector<std::string> &keys)
{
    if (state->remove(keys.constData(), keys.size()) > 0)
        setUpdated(true);
}

void IBaseHpfTableModel::clearRows()
{
    state->clear();
    setUpdated(true);
}

void IBaseHpfTableModel::columnsChanged()
{
    state->columnsChanged();
    setUpdated(true);
}

void IBaseHpfTableModel::_addData(const Row &) {}

void IBaseHpfTableModel::_updateData(const Row &) {}

void IBaseHpfTableModel::onSecondTimer()
{
    onTimer();
}

void IBaseHpfTableModel::onResourceChanged()
{
    onTimer();
}

int IBaseHpfTableModel::textContext(int) const
{
    return 0;
}

IBaseHpfTableModel::Row IBaseHpfTableModel::getData(int row) const
{
    state->settle();
    std::vector<HpfShownRow> rows;
    state->fetch(row, 1, rows);
    return rows.empty() ? Row() : rows.front().row;
}

IBaseHpfTableModel::Row IBaseHpfTableModel::getDataByKey(const QString &key) const
{
    return state->rowOfKey(key.toStdString());
}

QList<IBaseHpfTableModel::Row> IBaseHpfTableModel::getAllDatas() const
{
    state->settle();
    QList<Row> rows;
    state->forEachRow(false, [&rows](const HpfShownRow &shown) { rows.append(shown.row); });
    return rows;
}

void IBaseHpfTableModel::getDatas(QList<Row> &rows) const
{
    state->settle();
    state->forEachRow(true, [&rows](const HpfShownRow &shown) { rows.append(shown.row); });
}

bool IBaseHpfTableModel::containData(const std::string &key) const
{
    return state->idOfKey(key) != 0;
}

int IBaseHpfTableModel::size() const
{
    state->settle();
    return state->status().shown;
}

int IBaseHpfTableModel::allSize() const
{
    return state->status().all;
}

bool IBaseHpfTableModel::isPending() const
{
    return state->isPending();
}

quint64 IBaseHpfTableModel::changeCount() const
{
    return state->status().dataEpoch;
}

int IBaseHpfTableModel::indexOfKey(const std::string &key) const
{
    state->settle();
    return state->shownIndexOfKey(key);
}

void IBaseHpfTableModel::filterColumn(int column, QPair<EFilterType, QSet<QString>> &filter)
{
    state->setFilter(column, filter);
    setUpdated(true);
}

void IBaseHpfTableModel::filterColumnCombin(int column, QPair<EFilterType, QSet<QString>> &filter)
{
    state->narrowFilter(column, filter);
    setUpdated(true);
}

void IBaseHpfTableModel::clearFilter()
{
    state->clearFilters();
    setUpdated(true);
}

QMap<int, FilterConditions> IBaseHpfTableModel::columnFilters() const
{
    QMap<int, FilterConditions> filters;
    const HpfModelWish wish = state->wish();
    for (auto it = wish.filters.cbegin(); it != wish.filters.cend(); ++it)
        filters.insert(it.key(), plainConditions(it.value()));
    return filters;
}

void IBaseHpfTableModel::setAppendSeq(bool append)
{
    state->setAppendSeq(append);
}

bool IBaseHpfTableModel::appendSeq() const
{
    return state->appendSeq();
}

void IBaseHpfTableModel::setSortColumns(const QVector<QPair<int, int>> &columns)
{
    state->setSort(columns);
    setUpdated(true);
}

QVector<QPair<int, int>> IBaseHpfTableModel::sortColumns() const
{
    return state->wish().sort;
}

int IBaseHpfTableModel::customSort(const Row &a, const Row &b) const
{
    if (!a || !b)
        return 0;
    const auto columns = sortColumns();
    for (const auto &[column, order] : columns) {
        if (column == SortCustom)
            continue;
        const int compared = compareBy({column, columnType(column)}, order != 0, *a, *b);
        if (compared != 0)
            return compared;
    }
    return 0;
}

bool IBaseHpfTableModel::isFlashChange(int row, int column) const
{
    if (!columnFlashChange(column))
        return false;
    std::vector<HpfShownRow> rows;
    state->fetch(row, 1, rows);
    return !rows.empty() && rows.front().row->isFlashChange(column);
}

void IBaseHpfTableModel::setUpdated(bool updated)
{
    state->setUpdated(updated);
}

bool IBaseHpfTableModel::updated() const
{
    return state->updated();
}

void IBaseHpfTableModel::setChangeListener(std::function<void()> listener, const void *owner)
{
    state->setListener(std::move(listener), owner);
}

void IBaseHpfTableModel::setColumnStatEnable(int column, bool enable)
{
    state->setSum(column, enable);
    setUpdated(true);
}

bool IBaseHpfTableModel::columnStatEnable(int column) const
{
    return state->wish().sums.count(column) != 0;
}

double IBaseHpfTableModel::getStatColumnDouble(int column) const
{
    state->settle();
    return state->sum(column, std::numeric_limits<double>::max(), &core::ColumnSum::toDouble);
}

qint64 IBaseHpfTableModel::getStatColumnLongLong(int column) const
{
    state->settle();
    return state->sum(column, std::numeric_limits<qint64>::max(), &core::ColumnSum::toInteger);
}

void IBaseHpfTableModel::_addStatColumnData(const Row &row)
{
    state->count(row);
    setUpdated(true);
}

void IBaseHpfTableModel::_resetStatMap()
{
    state->uncountAll();
    setUpdated(true);
}

} // namespace ZB
