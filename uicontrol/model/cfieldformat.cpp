#include "model/cfieldformat.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>

#include "kdservice/idata.h"
#include "kdservice/typemanager.h"
#include "model/fieldvalue.h"
#include "model/recordsearch.h"
#include "utils/timetext.h"
#include "zb/numberformat.h"

namespace KV {

namespace {

using kdservice::IData;
using utils::ETimeText;

constexpr int noInt = std::numeric_limits<int>::max();
constexpr qint64 noLong = std::numeric_limits<qint64>::max();
constexpr double nearlyZero = 1e-05;      ///< a price up to it is none
constexpr int rememberedEnumValues = 128; ///< one-character codes fit in

/// -1 when the argument is no field id.
int fieldIdIn(const std::string &argument)
{
    char *end = nullptr;
    const long id = std::strtol(argument.c_str(), &end, 10);
    const bool whole = !argument.empty() && *end == '\0';
    return whole && id >= 0 && id <= noInt ? static_cast<int>(id) : -1;
}

ETimeText timePartIn(const std::string &argument)
{
    if (argument == "timems")
        return ETimeText::TimeMillis;
    if (argument == "date")
        return ETimeText::Date;
    return argument == "datetime" ? ETimeText::DateTime : ETimeText::Time;
}

/// Orders that ended without a full fill: cancelled in part, cancelled, rejected.
bool endedUnfilled(int status)
{
    return status == '5' || status == '6' || status == '9';
}

} // namespace

const char *sideColorKey(kdservice::EEntrustBS side)
{
    if (side == kdservice::EntrustBuy)
        return riseColorKey;
    return side == kdservice::EntrustSell ? fallColorKey : defaultTextColorKey;
}

CFieldFormat::CFieldFormat() = default;
CFieldFormat::~CFieldFormat() = default;
CFieldFormat::CFieldFormat(const CFieldFormat &) = default;
CFieldFormat &CFieldFormat::operator=(const CFieldFormat &) = default;

CFieldFormat::CFieldFormat(const kdservice::FieldDes &field, int fieldId, kdservice::EVxTraderType traderType)
    : description(&field), id(fieldId), trader(traderType), precision(std::max<int>(field.precision, 0))
{
    readFuncs();
}

bool CFieldFormat::hasFunc(kdservice::EDisplayFunc func, std::string *argument) const
{
    kdservice::FieldDes::iterator found;
    if (!description->findFunc(func, found))
        return false;
    if (argument != nullptr)
        *argument = found->second;
    return true;
}

void CFieldFormat::readFuncs()
{
    if (description->funcs.empty())
        return;
    std::string argument;
    if (hasFunc(kdservice::DisplayEnum, &enumName)) {
        shown = Shown::Enumeration;
    } else if (hasFunc(kdservice::DisplayTime, &argument)) {
        shown = Shown::Time;
        timePart = static_cast<int>(timePartIn(argument));
    } else if (hasFunc(kdservice::DisplayDuration)) {
        shown = Shown::Duration;
    } else if (hasFunc(kdservice::DisplayPrice, &argument)) {
        shown = Shown::Price;
    } else if (hasFunc(kdservice::DisplayOptionName, &argument)) {
        shown = Shown::OptionName;
    } else if (hasFunc(kdservice::DisplayInstrumentName, &argument)) {
        shown = Shown::InstrumentName;
    }
    argumentField = fieldIdIn(argument);

    if (hasFunc(kdservice::DisplayDirection)) {
        colored = Colored::Side;
    } else if (hasFunc(kdservice::DisplayChange)) {
        colored = Colored::Change;
    } else if (hasFunc(kdservice::DisplayStatus)) {
        colored = Colored::Status;
    } else if (hasFunc(kdservice::DisplayComparePrice, &argument)) {
        colored = Colored::ComparedPrice;
        compareField = fieldIdIn(argument);
    }
}

void CFieldFormat::rememberEnumTexts()
{
    if (shown != Shown::Enumeration)
        return;
    enumTexts.clear();
    enumTexts.reserve(rememberedEnumValues);
    const auto *types = kdservice::TypeManager::instance();
    for (int value = 0; value < rememberedEnumValues; ++value)
        enumTexts.append(types->getEnumItemName(enumName, value, trader));
}

bool CFieldFormat::textFollowsValue() const
{
    const bool instrumentsDecimals = shown == Shown::Price && argumentField >= 0;
    return !instrumentsDecimals && shown != Shown::OptionName && shown != Shown::InstrumentName;
}

QString CFieldFormat::unitOf(const QString &text) const
{
    constexpr auto unitFlags = utils::FormatUnit | utils::FormatPercent;
    if (text.isEmpty() || (description->formatFlags & unitFlags).value() == 0)
        return QString();
    const QChar last = text.at(text.size() - 1);
    return last == QChar(u'万') || last == QChar(u'亿') || last == QLatin1Char('%') ? QString(last) : QString();
}

/// What shows as "-".
bool CFieldFormat::isAbsentNumber(const IData &holder) const
{
    switch (description->dataType) {
    case kdservice::ExtChar:
        return holder.getInt(id) == noInt;
    case kdservice::ExtInt: {
        const int value = holder.getInt(id);
        return value == noInt || isNoTime(value);
    }
    case kdservice::ExtLong: {
        const qint64 value = holder.getLong(id);
        return value == noLong || isNoTime(value);
    }
    case kdservice::ExtDouble: {
        const double value = holder.getDouble(id);
        const bool isPrice = shown == Shown::Price && colored != Colored::Change;
        return isAbsent(value) || (isPrice && !(std::isfinite(value) && std::fabs(value) > nearlyZero));
    }
    default:
        return false;
    }
}

bool CFieldFormat::isNoTime(qint64 value) const
{
    return (shown == Shown::Time && value <= 0) || (shown == Shown::Duration && (value < 0 || value >= noInt));
}

double CFieldFormat::number(const IData &holder) const
{
    QVariant value;
    readFieldValue(holder, description->dataType, id, value);
    return value.toDouble();
}

const char *CFieldFormat::colorKey(const IData &holder) const
{
    if (isAbsentNumber(holder))
        return dimTextColorKey;
    switch (colored) {
    case Colored::Side:
        return sideColorKey(static_cast<kdservice::EEntrustBS>(holder.getInt(id)));
    case Colored::Change:
        return ZB::getStockColorKey(number(holder), 0);
    case Colored::Status:
        return endedUnfilled(holder.getInt(id)) ? dimTextColorKey : defaultTextColorKey;
    case Colored::ComparedPrice: {
        boost::shared_ptr<IData> keep;
        const IData *source = compareField < 0 ? nullptr : recordHolding(holder, compareField, keep);
        return source == nullptr ? defaultTextColorKey
                                 : ZB::getStockColorKey(number(holder), source->getDouble(compareField));
    }
    default:
        return defaultTextColorKey;
    }
}

} // namespace KV
