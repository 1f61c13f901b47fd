#include "logfile/logdecoder.h"

#include <QtCore/QTextCodec>
#include <algorithm>
#include <cstring>

namespace terminal {

namespace {

using Byte = unsigned char;

constexpr QChar zeroPicture(0x2400);

bool isContinuation(Byte byte)
{
    return (byte & 0xC0) == 0x80;
}

/// Length that a UTF-8 character with this first byte has; 0 for a byte that starts none.
int lengthByLead(Byte lead)
{
    if (lead < 0x80)
        return 1;
    if (lead < 0xC2 || lead > 0xF4)
        return 0;
    return lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}

/// Rules out forms that are longer than needed, surrogates and what is beyond U+10FFFF.
bool isAllowedSecond(Byte lead, Byte second)
{
    switch (lead) {
    case 0xE0:
        return second >= 0xA0;
    case 0xED:
        return second < 0xA0;
    case 0xF0:
        return second >= 0x90;
    case 0xF4:
        return second < 0x90;
    default:
        return true;
    }
}

/// Length of the well-formed UTF-8 character at the start of the bytes; 0 when there is none.
int characterLength(const Byte *bytes, int length)
{
    const int wanted = lengthByLead(bytes[0]);
    if (wanted == 0 || wanted > length || (wanted > 1 && !isAllowedSecond(bytes[0], bytes[1])))
        return 0;
    return std::all_of(bytes + 1, bytes + wanted, isContinuation) ? wanted : 0;
}

/// Whether both bytes together are one of the 3,755 everyday Chinese characters of GB18030.
bool isEverydayChinese(Byte first, Byte second)
{
    return first >= 0xB0 && first <= 0xD7 && second >= 0xA1 && second != 0xFF;
}

bool isAscii(const char *bytes, int length)
{
    return std::all_of(bytes, bytes + length, [](char byte) { return static_cast<Byte>(byte) < 0x80; });
}

void showZeroBytes(QString &text)
{
    const auto end = std::unique(text.begin(), text.end(), [](QChar a, QChar b) { return a.isNull() && b.isNull(); });
    text.truncate(static_cast<int>(end - text.begin()));
    text.replace(QChar(QChar::Null), zeroPicture);
}

} // namespace

LogDecoder::LogDecoder() : gb18030(QTextCodec::codecForName("GB18030")) {}

QString LogDecoder::decode(const char *bytes, int length)
{
    QString text;
    if (isAscii(bytes, length)) {
        text = QString::fromLatin1(bytes, length);
    } else if (!gb18030 || isUtf8(bytes, length)) {
        ++utf8Lines;
        text = QString::fromUtf8(bytes, length);
    } else {
        ++gb18030Lines;
        text = gb18030->toUnicode(bytes, length);
    }
    if (length > 0 && std::memchr(bytes, 0, static_cast<std::size_t>(length))) {
        zeroBytes = true;
        showZeroBytes(text);
    }
    return text;
}

/// Chinese text in UTF-8 consists of characters of three bytes; GB18030 hardly ever looks like that. Where bytes are
/// broken the whole ones decide; what the end cuts off tells nothing. Characters of two bytes only may be either.
bool LogDecoder::isUtf8(const char *chars, int length) const
{
    const auto *bytes = reinterpret_cast<const Byte *>(chars);
    int wide = 0;
    int broken = 0;
    bool maybeChinese = true;
    for (int at = 0; at < length;) {
        const int size = characterLength(bytes + at, length - at);
        wide += size > 2 ? 1 : 0;
        if (size == 2)
            maybeChinese = maybeChinese && isEverydayChinese(bytes[at], bytes[at + 1]);
        const int start = at;
        for (at += std::max(size, 1); size == 0 && at < length && isContinuation(bytes[at]);)
            ++at; // the rest of the same broken character
        const bool isCutOff = at == length && lengthByLead(bytes[start]) > length - start;
        broken += size == 0 && !isCutOff ? 1 : 0;
    }
    if (broken > 0)
        return wide >= 2 * broken;
    return wide > 0 || !maybeChinese || utf8Lines > gb18030Lines;
}

int LogDecoder::unfinished(const char *chars, int length) const
{
    const auto *bytes = reinterpret_cast<const Byte *>(chars);
    const auto *const end = bytes + length;
    if (isUtf8(chars, length)) {
        for (int back = 1; back <= std::min(length, 3); ++back)
            if (!isContinuation(end[-back]))
                return lengthByLead(end[-back]) > back ? back : 0;
        return 0;
    }
    // Only from a plain ASCII byte on is it known where the characters of GB18030 start.
    const auto *at = end;
    while (at > bytes && at[-1] >= 0x30)
        --at;
    while (at < end) {
        const auto left = static_cast<int>(end - at);
        const bool isFour = at[0] >= 0x81 && left > 1 && at[1] >= 0x30 && at[1] <= 0x39;
        const int size = at[0] < 0x81 ? 1 : isFour ? 4 : 2;
        if (size > left)
            return left;
        at += size;
    }
    return 0;
}

QString LogDecoder::encoding() const
{
    if (utf8Lines == 0 && gb18030Lines == 0)
        return {};
    return utf8Lines >= gb18030Lines ? QStringLiteral("UTF-8") : QStringLiteral("GB18030");
}

} // namespace terminal
