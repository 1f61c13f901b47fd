#pragma once

#include <QtCore/qglobal.h>
#include <cstring>
#include <string_view>

#include "rows/textstore.h"

namespace core {

/// The key of a slot in 32 bytes: its hash, and its text up to 23 bytes, as keys have it as a rule; a longer one stands
/// in a store that the caller keeps. Not thread-safe.
class SlotKey
{
public:
    quint64 hash = 0;

    /// There must be no text.
    void setText(std::string_view text, TextStore &longTexts)
    {
        if (text.size() <= inlineSize) {
            length = static_cast<quint8>(text.size());
            text.copy(bytes, inlineSize);
            return;
        }
        const TextStore::Ref ref = longTexts.add(text);
        std::memcpy(bytes, &ref, sizeof ref);
        length = stored;
    }
    void clearText(TextStore &longTexts)
    {
        if (length == stored)
            longTexts.remove(ref());
        length = 0;
    }
    std::string_view text(const TextStore &longTexts) const
    {
        return length == stored ? longTexts.text(ref()) : std::string_view(bytes, length);
    }

private:
    static constexpr std::size_t inlineSize = 23;
    static constexpr quint8 stored = 0xff;

    TextStore::Ref ref() const
    {
        TextStore::Ref ref;
        std::memcpy(&ref, bytes, sizeof ref);
        return ref;
    }

    char bytes[inlineSize] = {}; ///< the text, or where it is stored
    quint8 length = 0;
};

} // namespace core
