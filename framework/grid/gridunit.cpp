#include "grid/gridunit.h"

namespace ZB {

QString takeUnit(QString &text)
{
    constexpr QChar tenThousands(0x4e07);
    constexpr QChar hundredMillions(0x4ebf);
    if (text.size() < 2 || !text[0].isPrint())
        return QString();
    const QChar last = text.back();
    const QChar beforeLast = text[text.size() - 2];
    const bool unit = last == QLatin1Char('%') || last == tenThousands || last == hundredMillions;
    if (!unit || !(beforeLast.isDigit() || beforeLast == QLatin1Char(' ')))
        return QString();
    text.chop(1);
    text = text.trimmed();
    return last;
}

} // namespace ZB
