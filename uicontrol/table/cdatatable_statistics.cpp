#include <QtCore/QElapsedTimer>
#include <algorithm>
#include <cmath>
#include <fmt/format.h>
#include <limits>

#include "kv/ctradesetting.h"
#include "model/cfieldformat.h"
#include "model/fieldvalue.h"
#include "model/recordsearch.h"
#include "stats/exactsum.h"
#include "table/cdatatable_p.h"
#include "table/columntotals.h"
#include "utils/clogcenter.h"
#include "zb/numberformat.h"

namespace KV {

namespace {

constexpr int summedProperty = 1;
constexpr int groupedProperty = 10;
constexpr int boldProperty = 11;
constexpr int sumLogId = 51;
constexpr int idleShare = 20; ///< sums take at most one part in so many of the time
constexpr double noNumber = std::numeric_limits<double>::max();

} // namespace

/// The sums come a moment after a change, at most ten times a second, and more seldom where they take long.
void CDataTable::onTimer()
{
    if (!sinceSums->isValid() || sinceSums->elapsed() >= sumsTook * idleShare)
        updateSums();
}

void CDataTable::updateSums()
{
    if (!allSumsStale && staleSums.empty())
        return;
    QElapsedTimer clock;
    clock.start();
    const auto &fields = allSumsStale ? summedFields : staleSums;
    if (utils::CLogCenter::instance()->isDebugIdEnabled(sumLogId))
        updateStatData(fields);
    else
        for (const auto &[fieldId, field] : fields)
            if (const int column = fieldID2columnID(fieldId); column >= 0)
                showSum(*field, column, keptSumOf(fieldId, column));
    allSumsStale = false;
    staleSums.clear();
    sumsTook = clock.elapsed();
    sinceSums->start();
}

void CDataTable::updateStatData(const std::map<int, kdservice::FieldDes *> &fields)
{
    for (const auto &[fieldId, field] : fields) {
        const int column = fieldID2columnID(fieldId);
        if (!field || column < 0 || !field->getProperty(summedProperty))
            continue;
        showSum(*field, column, sumOf(column));
    }
}

void CDataTable::showSum(const kdservice::FieldDes &field, int column, double sum)
{
    const QString text = sumText(field, sum);
    if (text.isNull())
        return;
    setStatText(column, text);
    setStatColorKey(column, QStringLiteral("clr_table_text_default"));
    setStatColumnAlignment(column, this->column(column).alignment);
    setStatColumnBoldFont(column, field.getProperty(boldProperty));
    if (field.getProperty(boldProperty) && !records.empty())
        boldColumns.insert(column);
}

/// Rows have come or gone.
void CDataTable::sumAnew()
{
    allSumsStale = true;
    totals->clear();
}

/// A row may count for other values: those of the record that it shows now.
void CDataTable::takeSummed(int row, const RecordPtr &record)
{
    for (const auto &[fieldId, field] : summedFields)
        if (const FieldRoute route = routeOf(fieldId); route.total)
            route.total->change(placeOf(row), numberIn(row, record, route.column));
}

/// What is kept is brought up to date with every record that is handed in. Cells that no record fills change unseen, so
/// nothing is kept of columns and rows that have such.
double CDataTable::keptSumOf(int field, int column)
{
    if (static_cast<int>(rowToKey.size()) != rowCount())
        return sumOf(column); // there are rows of a derived table's own
    if (const ColumnTotal *kept = totals->find(field))
        return kept->sum();
    const auto hasRecord = [](const ShownRow &row) { return recordIn(row) != nullptr; };
    if (!formatOfColumn(column) || !std::all_of(rowToKey.begin(), rowToKey.end(), hasRecord))
        return sumOf(column);
    return totals->count(field, numbersIn(column)).sum();
}

/// By row id, those of rows too that a derived table has added on its own.
std::vector<double> CDataTable::numbersIn(int column) const
{
    std::vector<double> numbers;
    numbers.reserve(static_cast<std::size_t>(rowCount()));
    if (static_cast<int>(rowToKey.size()) == rowCount()) {
        for (const ShownRow &row : rowToKey)
            numbers.push_back(numberIn(row.row, recordIn(row), column));
        return numbers;
    }
    QVector<int> ids = rows();
    std::sort(ids.begin(), ids.end());
    for (const int id : ids) {
        const ShownRow *known = shownRow(id);
        numbers.push_back(numberIn(id, known ? recordIn(*known) : RecordPtr(), column));
    }
    return numbers;
}

/// record: what the row shows; null for none.
double CDataTable::numberIn(int row, const RecordPtr &record, int column) const
{
    const CFieldFormat *format = formatOfColumn(column);
    if (record && format)
        return numberOf(*record, format->fieldId());
    const QVariant value = cellValue(row, column);
    return value.isValid() ? value.toDouble() : noNumber;
}

double CDataTable::numberOf(const kdservice::IData &record, int field)
{
    RecordPtr nested;
    const kdservice::IData *holder = &record;
    const kdservice::FieldDes *description = record.getFieldDes(field);
    if (!description) {
        holder = recordHolding(record, field, nested);
        description = holder ? holder->getFieldDes(field) : nullptr;
    }
    if (!description)
        return noNumber;
    switch (description->dataType) {
    case kdservice::ExtInt: {
        const int value = holder->getInt(field);
        return value == std::numeric_limits<int>::max() ? noNumber : value;
    }
    case kdservice::ExtLong: {
        const qint64 value = holder->getLong(field);
        return value == std::numeric_limits<qint64>::max() ? noNumber : static_cast<double>(value);
    }
    case kdservice::ExtDouble:
        return holder->getDouble(field);
    default:
        return noNumber;
    }
}

/// Exact, rounded once.
double CDataTable::sumOf(int column) const
{
    core::ExactSum sum;
    std::vector<double> logged;
    const bool logging = utils::CLogCenter::instance()->isDebugIdEnabled(sumLogId);
    for (const double value : numbersIn(column)) {
        if (isAbsent(value))
            continue;
        sum.add(value);
        if (logging)
            logged.push_back(value);
    }
    if (logging)
        logSum(logged, sum.value());
    return sum.value();
}

void CDataTable::logSum(const std::vector<double> &values, double sum)
{
    const log4cxx::LoggerPtr logger = utils::getLogger("KDDbgFile");
    for (const double value : values)
        LOG4CXX_INFO(logger, fmt::format("[dbg_id={0}] {1}", sumLogId, value));
    LOG4CXX_INFO(logger, fmt::format("[dbg_id={0}]  total = {1}", sumLogId, sum));
}

/// Null for a field that shows no sum.
QString CDataTable::sumText(const kdservice::FieldDes &field, double sum) const
{
    int precision = 0;
    if (field.dataType == kdservice::ExtDouble)
        precision = field.precision;
    else if (field.dataType != kdservice::ExtInt && field.dataType != kdservice::ExtLong)
        return QString();
    const QString invalid = QStringLiteral("非法值");
    const auto value = static_cast<long double>(sum);
    if (!field.getProperty(groupedProperty))
        return ZB::formatDoubleNumber(value, precision, utils::FormatNone, false, invalid);
    const CUserConfig *config = getUserConfig();
    const auto flags = config ? CTradeSetting(*config).getSegmentFlag() : utils::CFlags<utils::EFormatNumberFlag>();
    return ZB::formatDoubleNumberSpace(value, precision, flags, false, invalid);
}

} // namespace KV
