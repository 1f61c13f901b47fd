#include "model/fieldformatter.h"

#include "kdservice/idata.h"
#include "model/cfieldformat.h"
#include "model/fieldvalue.h"

namespace KV {

bool formatField(const boost::shared_ptr<kdservice::IData> &record, const kdservice::FieldDes *field, int fieldId,
                 QString &text, QString &colorKey, QString &unit, QVariant &value, kdservice::EVxTraderType traderType)
{
    if (!record || field == nullptr)
        return false;
    const CFieldFormat format(*field, fieldId, traderType);
    text = format.text(*record);
    colorKey = QLatin1String(format.colorKey(*record));
    unit = format.unitOf(text);
    value = statisticValue(*record, field->dataType, fieldId).toVariant();
    return true;
}

} // namespace KV
