#include <cstring>
#include <limits>
#include <utility>

#include "model/cfieldformat.h"
#include "model/fieldvalue.h"
#include "model/recordsearch.h"
#include "table/cdatatable_p.h"
#include "zb/cuiresource.h"

namespace KV {

namespace {

constexpr int boldProperty = 11;

bool isNoValue(const kdservice::IData &holder, kdservice::EXT_DATA_TYPE type, int fieldId)
{
    switch (type) {
    case kdservice::ExtInt:
        return holder.getInt(fieldId) == std::numeric_limits<int>::max();
    case kdservice::ExtLong:
        return holder.getLong(fieldId) == std::numeric_limits<qint64>::max();
    case kdservice::ExtDouble:
        return isAbsent(holder.getDouble(fieldId));
    default:
        return false;
    }
}

/// Null for the table's own colour, which changes with the selection.
const QColor *colorOf(const char *key)
{
    return std::strcmp(key, defaultTextColorKey) == 0 ? nullptr
                                                      : ZB::CUiResource::instance()->getColor(QLatin1String(key));
}

} // namespace

const CFieldFormat *CDataTable::formatOfColumn(int column) const
{
    const auto at = static_cast<std::size_t>(column);
    return column >= 0 && at < formats.size() && formats[at].field() ? &formats[at] : nullptr;
}

void CDataTable::showData(const RecordPtr &record, int row, int firstColumn)
{
    if (!hasRow(row))
        return;
    ShownRow &shown = rowFor(row);
    const bool isNew = !recordIn(shown);
    setShown(shown, record, !isNew);
    if (isNew)
        sumAnew();
    else
        takeSummed(row, record);
    takeBoldColumns();
    if (firstColumn <= 0)
        markRow(row);
    for (int column = firstColumn; firstColumn > 0 && column < columnCount(); ++column)
        markCell(row, column);
}

/// From the fields, once after they or the records have become others.
void CDataTable::takeBoldColumns()
{
    if (std::exchange(boldKnown, true))
        return;
    for (std::size_t column = 0; column < formats.size(); ++column)
        if (formats[column].field() && formats[column].field()->getProperty(boldProperty))
            boldColumns.insert(static_cast<int>(column));
}

void CDataTable::showCell(int row, int column)
{
    const ShownRow *shown = shownRow(row);
    const CFieldFormat *format = formatOfColumn(column);
    if (shown && format)
        showDataField(hasChanged(*shown), RecordPtr(recordIn(*shown)), row, column, format->fieldId());
}

void CDataTable::showDataField(bool flag, const RecordPtr &record, int row, int column, int field)
{
    RecordPtr nested;
    const CFieldFormat *format = formatOfColumn(column);
    if (!record || !format || !recordHolding(*record, field, nested))
        return setCellText(row, column, QString());
    showDataFieldImpl(flag, nested ? nested : record, row, column, format->field(), field, tradeType);
}

void CDataTable::showDataFieldImpl(bool, const RecordPtr &record, int row, int column, const kdservice::FieldDes *field,
                                   int fieldId, int trader)
{
    const CFieldFormat *known = formatOfColumn(column);
    const bool fits = known && known->field() == field && known->fieldId() == fieldId && trader == tradeType;
    const CFieldFormat format =
        fits ? CFieldFormat() : CFieldFormat(*field, fieldId, static_cast<kdservice::EVxTraderType>(trader));
    const CFieldFormat &used = fits ? *known : format;
    QString text = used.text(*record);
    const QString unit = used.unitOf(text);
    text.chop(unit.size());
    setCellText(row, column, text.trimmed(), colorOf(used.colorKey(*record)), unit);
}

bool CDataTable::getDataByFieldID(const RecordPtr &record, int field, QString &text) const
{
    if (!record)
        return false;
    RecordPtr nested;
    const kdservice::IData *holder = recordHolding(*record, field, nested);
    if (!holder)
        return false;
    if (const CFieldFormat *known = formatOfColumn(fieldID2columnID(field)))
        text = known->text(*holder);
    else
        text = CFieldFormat(*holder->getFieldDes(field), field, tradeType).text(*holder);
    return true;
}

QVariant CDataTable::cellValue(int row, int column) const
{
    const ShownRow *shown = shownRow(row);
    const CFieldFormat *format = formatOfColumn(column);
    if (!shown || !recordIn(*shown) || !format)
        return ZB::COddEvenRowTable::cellValue(row, column);
    RecordPtr nested;
    const kdservice::IData *holder = recordHolding(*recordIn(*shown), format->fieldId(), nested);
    const kdservice::EXT_DATA_TYPE type = format->field()->dataType;
    QVariant value;
    if (holder && !isNoValue(*holder, type, format->fieldId()))
        readFieldValue(*holder, type, format->fieldId(), value);
    return value;
}

} // namespace KV
