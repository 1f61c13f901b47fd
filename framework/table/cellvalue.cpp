#include "table/cellvalue.h"

#include <cmath>
#include <limits>
#include <optional>

#include "zb/ibasehpftabledata.h"

namespace ZB {

namespace {

struct ShownNumber
{
    int decimals = 0;
    bool percent = false;
    bool grouped = false;
};

bool isGroupMark(QChar mark)
{
    return mark == QLatin1Char(',') || mark == QLatin1Char(' ') || mark == QChar(0xa0);
}

/// Reads the suffix of a number; `end` comes in behind the last digit.
bool readUnit(const QString &text, int end, ShownNumber &shown)
{
    while (end < text.size() && text[end] == QLatin1Char(' '))
        ++end;
    if (end == text.size())
        return true;
    if (end + 1 != text.size())
        return false;
    shown.percent = text[end] == QLatin1Char('%');
    return shown.percent || text[end] == QChar(0x4e07) || text[end] == QChar(0x4ebf);
}

/// How a number is written in a text; empty for texts that are no number, such as "09:30:00" and "2023-07-11".
std::optional<ShownNumber> readNumber(const QString &text)
{
    ShownNumber shown;
    int at = text.startsWith(QLatin1Char('+')) || text.startsWith(QLatin1Char('-')) ? 1 : 0;
    int digits = 0;
    bool point = false;
    for (; at < text.size(); ++at) {
        const QChar mark = text[at];
        if (mark >= QLatin1Char('0') && mark <= QLatin1Char('9')) {
            ++digits;
            shown.decimals += point;
        } else if (mark == QLatin1Char('.') && !point) {
            point = true;
        } else if (isGroupMark(mark) && digits && !point && at + 1 < text.size() && text[at + 1].isDigit()) {
            shown.grouped = true;
        } else {
            break;
        }
    }
    if (!digits || !readUnit(text, at, shown))
        return std::nullopt;
    return shown;
}

/// The raw text is asked first: it carries the value of computed columns too, which getLongLong does not.
std::optional<qint64> integerOf(IBaseHpfTableData &row, int column, QVariant::Type type)
{
    bool readable = false;
    qint64 value = row.getQString(column).toLongLong(&readable);
    if (!readable)
        value = type == QVariant::Int ? row.getInt(column) : row.getLongLong(column);
    const bool absent = value == std::numeric_limits<qint64>::max() ||
                        (type == QVariant::Int && value == std::numeric_limits<int>::max());
    return absent ? std::nullopt : std::optional<qint64>(value);
}

CellValue numberOf(IBaseHpfTableData &row, int column, QVariant::Type type, const ShownNumber &shown)
{
    CellNumber number{qint64(0), shown.decimals, shown.percent, shown.grouped};
    if (type == QVariant::Double) {
        const double value = row.getDouble(column);
        if (!std::isfinite(value) || value == std::numeric_limits<double>::max())
            return std::monostate();
        number.value = value;
        return number;
    }
    const auto value = integerOf(row, column, type);
    if (!value)
        return std::monostate();
    number.value = *value;
    return number;
}

} // namespace

bool isNumberType(QVariant::Type type)
{
    return type == QVariant::Int || type == QVariant::LongLong || type == QVariant::Double;
}

CellValue cellValue(IBaseHpfTableData &row, int column, QVariant::Type type)
{
    const QString text = row.getDisplayQString(column);
    if (text.isEmpty() || text == QLatin1String("-"))
        return std::monostate();
    if (isNumberType(type))
        if (const auto shown = readNumber(text))
            return numberOf(row, column, type, *shown);
    return text;
}

double toDouble(const CellNumber &number)
{
    const auto *integer = std::get_if<qint64>(&number.value);
    return integer ? double(*integer) : std::get<double>(number.value);
}

QString plainText(const CellValue &value)
{
    if (const auto *text = std::get_if<QString>(&value))
        return *text;
    const auto *number = std::get_if<CellNumber>(&value);
    if (!number)
        return QString();
    if (const auto *integer = std::get_if<qint64>(&number->value))
        return QString::number(*integer);
    return QString::number(std::get<double>(number->value), 'g', 15);
}

} // namespace ZB
