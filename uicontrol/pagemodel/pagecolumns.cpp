#include "pagemodel/pagecolumns.h"

#include "model/fieldvalue.h"
#include "model/recordsearch.h"

namespace KV {

void PageColumns::setTraderType(kdservice::EVxTraderType type)
{
    trader = type;
    rebuild();
}

void PageColumns::setFieldDesMap(const QMap<int, kdservice::FieldDes *> &map)
{
    descriptions = map;
    rebuild();
}

void PageColumns::setFieldColumnMap(const QMap<int, int> &map)
{
    columnOfField = map;
    rebuild();
}

void PageColumns::rebuild()
{
    ++changes;
    directFieldIds.fill(0);
    furtherFieldIds.clear();
    formats.clear();
    for (auto it = descriptions.cbegin(); it != descriptions.cend(); ++it)
        if (it.value())
            setFieldId(it.key(), it.value()->fieldId);
    for (auto it = columnOfField.cbegin(); it != columnOfField.cend(); ++it)
        setFieldId(it.value(), it.key());
    for (auto it = descriptions.cbegin(); it != descriptions.cend(); ++it)
        if (it.value())
            formats.insert(it.key(), CFieldFormat(*it.value(), fieldIdOf(it.key()), trader));
}

void PageColumns::setFieldId(int column, int fieldId)
{
    if (column < 0)
        return;
    if (column < directColumns)
        directFieldIds[static_cast<std::size_t>(column)] = fieldId;
    else
        furtherFieldIds[column] = fieldId;
}

int PageColumns::fieldIdOf(int column) const
{
    if (column < 0)
        return 0;
    return column < directColumns ? directFieldIds[static_cast<std::size_t>(column)] : furtherFieldIds.value(column, 0);
}

const CFieldFormat *PageColumns::format(int column) const
{
    const auto found = formats.constFind(column);
    return found == formats.constEnd() ? nullptr : &*found;
}

QVariant::Type PageColumns::type(int column) const
{
    const kdservice::FieldDes *description = field(column);
    if (description)
        return qtTypeOf(description->dataType);
    return static_cast<QVariant::Type>(properties.value(column).type);
}

const kdservice::IData *PageColumns::getFieldIDataPtr(const kdservice::IData &record, int column,
                                                      boost::shared_ptr<kdservice::IData> &keep) const
{
    return field(column) ? recordHolding(record, fieldIdOf(column), keep) : nullptr;
}

bool PageColumns::value(const kdservice::IData &record, int column, QVariant &out) const
{
    boost::shared_ptr<kdservice::IData> keep;
    const kdservice::IData *part = getFieldIDataPtr(record, column, keep);
    return part && readFieldValue(*part, field(column)->dataType, fieldIdOf(column), out);
}

bool PageColumns::origin(const kdservice::IData &record, int column, QString &text, OriginData &origin) const
{
    boost::shared_ptr<kdservice::IData> keep;
    const kdservice::IData *part = getFieldIDataPtr(record, column, keep);
    const CFieldFormat *fieldFormat = format(column);
    if (!part || !fieldFormat)
        return false;
    text = fieldFormat->text(*part);
    origin.colorKey = QString::fromLatin1(fieldFormat->colorKey(*part));
    origin.unit = fieldFormat->unitOf(text);
    readFieldValue(*part, field(column)->dataType, fieldIdOf(column), origin.value);
    return true;
}

} // namespace KV
