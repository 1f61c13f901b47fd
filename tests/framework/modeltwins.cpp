#include "modeltwins.h"

#include "table/hpfmodelaccess.h"

namespace modeltest {

using ZB::HpfModelAccess;

namespace {

constexpr int summed[] = {Quantity, Status, Price, Name};

} // namespace

ModelTwins::ModelTwins(Choice choice, int keys) : below(std::move(choice)), keyCount(keys), model(false)
{
    plain.append = false;
    model.compareRecords = PlainModel::compareCustom;
    for (const int column : summed)
        enableSum(column, true);
}

void ModelTwins::fill(int rowCount)
{
    plain.append = true;
    model.setAppendSeq(true);
    QVector<ZB::IBaseHpfTableModel::Row> rows;
    for (; filledRows < rowCount; ++filledRows) {
        plain.rows.push_back({filledKey(filledRows), chosenRecord(below)});
        rows.append(boost::make_shared<ValueRow>(plain.rows.back().key, plain.rows.back().record));
    }
    model.updateDatas(rows);
}

void ModelTwins::changeSomething()
{
    switch (below(44)) {
    case 0:
        return sort();
    case 1:
    case 2:
        return filter();
    case 3:
        plain.filters.clear();
        return model.clearFilter();
    case 4:
        plain.append = !plain.append;
        return model.setAppendSeq(plain.append);
    case 5:
        return below(5) == 0 ? clear() : putOne();
    case 6:
    case 7:
    case 8:
        return putMany();
    case 9:
        HpfModelAccess::step(model, below(3));
        return;
    case 10:
    case 11:
    case 12:
    case 13:
    case 14:
        return removeSome();
    case 15:
        return enableSum(summed[below(4)], below(2) == 0);
    case 16:
        return sumAnew();
    case 17:
        return changeAndCancel();
    case 18:
    case 19:
        return changeInPlace();
    default:
        putOne();
    }
}

QString ModelTwins::difference() const
{
    const QString all = allKeys(model);
    if (all != plain.allKeys())
        return QStringLiteral("all rows: %1\nwanted: %2").arg(all, plain.allKeys());
    const QString shown = shownKeys(model);
    if (shown != plain.shownKeys())
        return QStringLiteral("shown rows: %1\nwanted: %2").arg(shown, plain.shownKeys());
    for (const int column : summed) {
        const double sum = model.getStatColumnDouble(column);
        if (!sameNumber(sum, plain.realSumOf(column)))
            return QStringLiteral("sum of %1: %2, wanted: %3").arg(column).arg(sum).arg(plain.realSumOf(column));
    }
    for (const int column : {Quantity, Status}) {
        const qint64 sum = model.getStatColumnLongLong(column);
        if (sum != plain.integerSumOf(column))
            return QStringLiteral("sum of %1: %2, wanted: %3").arg(column).arg(sum).arg(plain.integerSumOf(column));
    }
    const QString rows = differenceOfRows(shown.split(' ', Qt::SkipEmptyParts));
    return rows.isEmpty() ? differenceOfLookUps() : rows;
}

/// Whether every way to a shown row leads to the same one.
QString ModelTwins::differenceOfRows(const QStringList &shown) const
{
    std::vector<ZB::HpfShownRow> fetched;
    if (HpfModelAccess::fetch(model, 0, shown.size() + 5, fetched) != shown.size() || model.size() != shown.size())
        return QStringLiteral("another number of shown rows");
    for (int i = 0; i < shown.size(); ++i) {
        const std::string rowKey = shown[i].toStdString();
        const ZB::HpfShownRow &row = fetched[static_cast<std::size_t>(i)];
        if (row.row->key() != rowKey || model.indexOfKey(rowKey) != i || HpfModelAccess::indexOf(model, row.id) != i ||
            HpfModelAccess::idOfKey(model, rowKey) != row.id || model.getData(i) != row.row ||
            model.getDataByKey(shown[i]) != row.row)
            return QStringLiteral("another row at %1: %2").arg(i).arg(shown[i]);
    }
    if (model.getData(shown.size()) || model.getData(-1))
        return QStringLiteral("a row outside");
    return QString();
}

QString ModelTwins::differenceOfLookUps() const
{
    if (model.allSize() != static_cast<int>(plain.rows.size()))
        return QStringLiteral("another number of rows");
    for (const PlainModel::Row &row : plain.rows)
        if (!model.containData(row.key) || (model.indexOfKey(row.key) >= 0) != plain.passes(row.record))
            return QStringLiteral("another state of %1").arg(QString::fromStdString(row.key));
    return QString();
}

std::string ModelTwins::filledKey(int number)
{
    return "f" + std::to_string(number);
}

std::string ModelTwins::key() const
{
    constexpr int choices = 256;
    if (filledRows > 0 && below(2) == 0)
        return filledKey((below(choices) * choices + below(choices)) % filledRows);
    return "k" + std::to_string(below(keyCount));
}

void ModelTwins::putOne()
{
    const std::string rowKey = key();
    const Record record = chosenRecord(below);
    plain.put(rowKey, record);
    const auto row = boost::make_shared<ValueRow>(rowKey, record);
    if (below(2) == 0)
        model.addData(row);
    else
        model.updateData(row);
}

void ModelTwins::putMany()
{
    QVector<ZB::IBaseHpfTableModel::Row> rows;
    for (int i = below(10) == 0 ? 3 * below(240) : below(20); i > 0; --i) {
        const std::string rowKey = key();
        const Record record = chosenRecord(below);
        plain.put(rowKey, record);
        rows.append(boost::make_shared<ValueRow>(rowKey, record));
    }
    model.updateDatas(rows);
}

/// As a host does that keeps one record for all the life of an order.
void ModelTwins::changeInPlace()
{
    const std::string rowKey = key();
    const auto row = boost::static_pointer_cast<ValueRow>(model.getDataByKey(QString::fromStdString(rowKey)));
    if (!row)
        return;
    const Record record = chosenRecord(below);
    plain.put(rowKey, record);
    row->setRecord(record);
    model.updateData(row);
}

void ModelTwins::enableSum(int column, bool enable)
{
    if (enable)
        plain.sums.insert(column);
    else
        plain.sums.remove(column);
    model.setColumnStatEnable(column, enable);
}

void ModelTwins::sumAnew()
{
    model._resetStatMap();
    for (const auto &row : model.getAllDatas())
        model._addStatColumnData(row);
}

/// What was asked for last goes, unless it is carried out by then.
void ModelTwins::changeAndCancel()
{
    model.size();
    const auto sortBefore = plain.sort;
    const auto filtersBefore = plain.filters;
    if (below(2) == 0)
        sort();
    else
        filter();
    if (below(2) == 0)
        HpfModelAccess::step(model, below(2));
    if (HpfModelAccess::cancel(model)) {
        plain.sort = sortBefore;
        plain.filters = filtersBefore;
    }
}

void ModelTwins::removeSome()
{
    QVector<std::string> keys;
    for (int i = below(8); i > 0; --i) {
        keys.append(key());
        plain.remove(keys.last());
    }
    if (keys.size() == 1)
        model.removeDataByKey(keys.first());
    else
        model.removeDatasByKey(keys);
}

void ModelTwins::clear()
{
    plain.rows.clear();
    model.clear();
}

void ModelTwins::sort()
{
    static constexpr int choices[] = {Quantity, Status, Price, Name, ZB::IBaseHpfTableModel::SortCustom, 17, -1};
    QVector<QPair<int, int>> columns;
    for (int i = below(4); i > 0; --i) {
        const int column = choices[below(static_cast<int>(std::size(choices)))];
        columns.append({column, below(3) - 1}); // whatever is not 0 is descending
    }
    plain.sort = columns;
    model.setSortColumns(columns);
}

void ModelTwins::filter()
{
    const int column = below(ColumnCount);
    const int type = below(3) == 0 ? 1 : 0;
    QSet<QString> values;
    for (int i = below(6); i > 0; --i) {
        const QString text = shownText(chosenRecord(below), column);
        values.insert(type == 1 ? text.left(2) : text);
    }
    if (below(2) == 0) {
        plain.filters[column].clear();
        model.filter(column, type, values);
    } else {
        model.narrow(column, type, values);
    }
    if (!values.isEmpty())
        plain.filters[column].append({type, values});
}

} // namespace modeltest
