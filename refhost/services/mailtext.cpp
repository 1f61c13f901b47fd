#include "services/mailtext.h"

#include <QtCore/QLocale>
#include <algorithm>

namespace refhost {

namespace {

constexpr int mostPlain = 60;   ///< characters of a header that need no folding
constexpr int mostEncoded = 42; ///< bytes in an encoded word: 75 characters with its frame
constexpr char32_t lastAscii = 0x7e;

bool isControl(QChar c)
{
    return c.category() == QChar::Other_Control || c == QChar::LineSeparator || c == QChar::ParagraphSeparator;
}

} // namespace

bool isMailAddress(const QString &text)
{
    const QString forbidden = QStringLiteral("<>()[],;:\\\" ");
    const int at = text.indexOf(QLatin1Char('@'));
    return at > 0 && at + 1 < text.size() && text.count(QLatin1Char('@')) == 1 &&
           std::none_of(text.begin(), text.end(), [&forbidden](QChar c) {
               return c.isSpace() || isControl(c) || c.unicode() > lastAscii || forbidden.contains(c);
           });
}

QByteArray headerText(const QString &text)
{
    QString clean = text;
    std::replace_if(clean.begin(), clean.end(), isControl, QLatin1Char(' '));
    clean = clean.trimmed();
    const bool isPlain = clean.size() <= mostPlain && !clean.contains(QLatin1String("=?")) &&
                         std::all_of(clean.begin(), clean.end(), [](QChar c) { return c.unicode() <= lastAscii; });
    if (isPlain)
        return clean.toLatin1();
    QByteArray header;
    QByteArray word;
    const auto flush = [&header, &word] {
        header += (header.isEmpty() ? "=?UTF-8?B?" : "\r\n =?UTF-8?B?") + word.toBase64() + "?=";
        word.clear();
    };
    for (const uint point : clean.toUcs4()) { // no character is cut in two
        const QByteArray bytes = QString::fromUcs4(&point, 1).toUtf8();
        if (word.size() + bytes.size() > mostEncoded)
            flush();
        word += bytes;
    }
    if (!word.isEmpty())
        flush();
    return header;
}

QByteArray mailDate(const QDateTime &time)
{
    const int minutes = time.offsetFromUtc() / 60;
    const QString zone = QStringLiteral("%1%2%3")
                             .arg(minutes < 0 ? QLatin1Char('-') : QLatin1Char('+'))
                             .arg(qAbs(minutes) / 60, 2, 10, QLatin1Char('0'))
                             .arg(qAbs(minutes) % 60, 2, 10, QLatin1Char('0'));
    return (QLocale::c().toString(time, QStringLiteral("ddd, dd MMM yyyy HH:mm:ss ")) + zone).toLatin1();
}

} // namespace refhost
