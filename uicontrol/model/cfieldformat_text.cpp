#include <algorithm>
#include <limits>

#include "kdservice/idata.h"
#include "kdservice/typemanager.h"
#include "kv/cuserconfig.h"
#include "kv/instrumentlookup.h"
#include "model/cfieldformat.h"
#include "model/recordsearch.h"
#include "utils/timetext.h"
#include "zb/numberformat.h"

namespace KV {

namespace {

using kdservice::IData;
using utils::ETimeText;

constexpr int noInt = std::numeric_limits<int>::max();
constexpr qint64 noLong = std::numeric_limits<qint64>::max();
constexpr int groupedBySpaces = 10; ///< property of the field

const QString &absentText()
{
    static const QString text = QStringLiteral("-");
    return text;
}

const QString &boolText(bool value)
{
    static const QString texts[] = {QStringLiteral("否"), QStringLiteral("是")};
    return texts[value ? 1 : 0];
}

} // namespace

QString CFieldFormat::text(const IData &holder) const
{
    switch (description->dataType) {
    case kdservice::ExtBool:
        return boolText(holder.getBool(id));
    case kdservice::ExtInt: {
        const int value = holder.getInt(id);
        return value == noInt ? absentText() : integerText(value);
    }
    case kdservice::ExtLong: {
        const qint64 value = holder.getLong(id);
        return value == noLong ? absentText() : integerText(value);
    }
    case kdservice::ExtDouble:
        return doubleText(holder);
    case kdservice::ExtChar:
        return codeText(holder);
    case kdservice::ExtString:
        return stringText(holder);
    default:
        return QString();
    }
}

QString CFieldFormat::integerText(qint64 value) const
{
    switch (shown) {
    case Shown::Enumeration:
        if (value >= std::numeric_limits<int>::min() && value <= noInt) {
            const QString name = enumText(static_cast<int>(value));
            if (!name.isEmpty())
                return name;
        }
        return QString::number(value);
    case Shown::Time:
        return utils::getStrTimeByTime(value, static_cast<ETimeText>(timePart));
    case Shown::Duration:
        return value < noInt ? utils::secondsToTime(static_cast<int>(std::max<qint64>(value, -1))) : absentText();
    default:
        break;
    }
    if (description->getProperty(groupedBySpaces))
        return ZB::formatDoubleNumberSpace(static_cast<long double>(value), precision, numberFlags(), false, QString());
    if (description->dataType == kdservice::ExtInt)
        return ZB::formatIntNumber(static_cast<int>(value), precision, numberFlags());
    return ZB::formatLonglongNumber(value, precision, numberFlags());
}

QString CFieldFormat::doubleText(const IData &holder) const
{
    const double value = holder.getDouble(id);
    const int decimals = shown == Shown::Price ? priceDecimals(holder) : precision;
    // A price of nothing is none; a change of nothing is one.
    if (shown == Shown::Price && colored != Colored::Change)
        return ZB::formatPriceDoubleNumber(value, decimals, numberFlags());
    static const QString invalid = QStringLiteral("非法值");
    if (description->getProperty(groupedBySpaces))
        return ZB::formatDoubleNumberSpace(static_cast<long double>(value), decimals, numberFlags(), false, invalid);
    return ZB::formatDoubleNumber(static_cast<long double>(value), decimals, numberFlags(), false, invalid);
}

QString CFieldFormat::stringText(const IData &holder) const
{
    if (shown != Shown::OptionName && shown != Shown::InstrumentName)
        return ZB::sToQs(holder.getString(id));
    boost::shared_ptr<IData> keep;
    const IData *coded = argumentField < 0 ? nullptr : recordHolding(holder, argumentField, keep);
    const std::string code = coded == nullptr ? holder.getString(id) : coded->getString(argumentField);
    const QString name = shown == Shown::OptionName ? getExOptName(code) : getInstrumentText(code).name;
    return name.isEmpty() ? ZB::sToQs(holder.getString(id)) : name;
}

QString CFieldFormat::codeText(const IData &holder) const
{
    const int code = holder.getInt(id);
    if (code == noInt)
        return absentText();
    if (shown == Shown::Enumeration) {
        const QString name = enumText(code);
        if (!name.isEmpty())
            return name;
    }
    return ZB::sToQs(holder.getString(id));
}

QString CFieldFormat::enumText(int value) const
{
    if (value >= 0 && value < enumTexts.size() && !enumTexts.at(value).isEmpty())
        return enumTexts.at(value);
    return kdservice::TypeManager::instance()->getEnumItemName(enumName, value, trader);
}

int CFieldFormat::priceDecimals(const IData &holder) const
{
    if (argumentField < 0)
        return precision;
    boost::shared_ptr<IData> keep;
    const IData *source = recordHolding(holder, argumentField, keep);
    if (source == nullptr)
        return precision;
    // The argument names the field of the decimals themselves, or the one of the instrument's code.
    int decimals = -1;
    switch (source->getFieldDes(argumentField)->dataType) {
    case kdservice::ExtInt:
        decimals = source->getInt(argumentField);
        break;
    case kdservice::ExtString:
        decimals = getInstrumentText(source->getString(argumentField)).priceDecimals;
        break;
    default:
        break;
    }
    return decimals >= 0 && decimals != noInt ? decimals : precision;
}

utils::CFlags<utils::EFormatNumberFlag> CFieldFormat::numberFlags() const
{
    const CUserConfig *config = getUserConfig();
    return config == nullptr ? description->formatFlags : description->formatFlags | config->getSegmentedFormatFlag();
}

} // namespace KV
