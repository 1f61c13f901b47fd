#pragma once

#include <QtCore/QString>
#include <QtCore/QVariant>
#include <boost/shared_ptr.hpp>

#include "kdservice/evxtradertype.h"
#include "uicontrolexport.h"

namespace kdservice {
class IData;
struct FieldDes;
} // namespace kdservice

namespace KV {

/// How every table of the library shows a record's field.
///
/// record: the one that holds the field itself. Outputs: the text; the resource key of its colour; the unit that the
/// text ends with ("万", "亿", "%" or nothing); the value that statistics use (an absent integer and one below zero as
/// 0, an absent or not finite double as 0, texts as an invalid variant). Nothing is touched, and the answer is false,
/// without a record or a description. Any thread. Who shows many records keeps a CFieldFormat instead.
UICONTROL_API bool formatField(const boost::shared_ptr<kdservice::IData> &record, const kdservice::FieldDes *field,
                               int fieldId, QString &text, QString &colorKey, QString &unit, QVariant &value,
                               kdservice::EVxTraderType traderType);

} // namespace KV
