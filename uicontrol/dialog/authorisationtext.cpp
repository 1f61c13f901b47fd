#include "dialog/authorisationtext.h"

namespace KV {

namespace {

constexpr qint64 nearDays = 30;

} // namespace

ValidityText validityText(const UserAuthorisation &authorisation, const QDate &today)
{
    const QDate &until = authorisation.validUntil;
    if (authorisation.hasNoEnd)
        return {EValidity::Valid, QStringLiteral("长期有效")};
    if (!until.isValid())
        return {EValidity::NearExpiry, QStringLiteral("有效期未知")};
    const QString date = QStringLiteral("至 %1").arg(until.toString(Qt::ISODate));
    const qint64 left = today.daysTo(until);
    if (left < 0)
        return {EValidity::Expired, QStringLiteral("%1（已过期 %2 天）").arg(date).arg(-left)};
    if (left == 0)
        return {EValidity::NearExpiry, QStringLiteral("%1（今天到期）").arg(date)};
    if (left <= nearDays)
        return {EValidity::NearExpiry, QStringLiteral("%1（还有 %2 天到期）").arg(date).arg(left)};
    return {EValidity::Valid, date};
}

} // namespace KV
