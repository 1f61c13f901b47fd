#include <QtCore/QTextCodec>

#include "zb/numberformat.h"

namespace ZB {

namespace {

/// Length of the UTF-8 sequence at `at`, 0 where there is none. As RFC 3629 has it: no overlong forms, no surrogates,
/// nothing above U+10FFFF.
std::size_t sequenceLength(const std::string &text, std::size_t at)
{
    const auto byte = [&text](std::size_t index) -> unsigned {
        return index < text.size() ? static_cast<unsigned char>(text[index]) : 0u;
    };
    const auto follows = [&byte](std::size_t index) { return (byte(index) & 0xC0u) == 0x80u; };
    const unsigned first = byte(at);
    const unsigned second = byte(at + 1);
    if (first < 0x80u)
        return 1;
    if (first >= 0xC2u && first <= 0xDFu)
        return follows(at + 1) ? 2 : 0;
    if ((first & 0xF0u) == 0xE0u) {
        const bool forbidden = (first == 0xE0u && second < 0xA0u) || (first == 0xEDu && second > 0x9Fu);
        return !forbidden && follows(at + 1) && follows(at + 2) ? 3 : 0;
    }
    if (first >= 0xF0u && first <= 0xF4u) {
        const bool forbidden = (first == 0xF0u && second < 0x90u) || (first == 0xF4u && second > 0x8Fu);
        return !forbidden && follows(at + 1) && follows(at + 2) && follows(at + 3) ? 4 : 0;
    }
    return 0;
}

bool isUtf8(const std::string &text)
{
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = sequenceLength(text, at);
        if (length == 0)
            return false;
        at += length;
    }
    return true;
}

} // namespace

QString sToQs(const std::string &text)
{
    const int length = static_cast<int>(text.size());
    if (isUtf8(text))
        return QString::fromUtf8(text.data(), length);
    const QTextCodec *codec = QTextCodec::codecForName("GB18030");
    return codec == nullptr ? QString::fromUtf8(text.data(), length) : codec->toUnicode(text.data(), length);
}

} // namespace ZB
