#pragma once

#include <memory>
#include <unordered_map>

#include "frameworkexport.h"

namespace ZB {

/// A letter or digit as one bit: 'a' to 'z' are bits 0 to 25, '0' to '9' bits 26 to 35; 0 for any other character.
inline quint64 initialBit(char32_t character)
{
    if (character >= U'a' && character <= U'z')
        return quint64(1) << (character - U'a');
    if (character >= U'0' && character <= U'9')
        return quint64(1) << (26 + character - U'0');
    return 0;
}

/// A character as texts are compared by: small, of ordinary width.
FRAMEWORK_API char32_t foldedCharacter(char32_t character);

/// By which letters a character of a name can be typed: itself for a letter or digit, the first letter of each of its
/// readings for a Chinese one. One thread at a time.
class FRAMEWORK_API CharReadings
{
public:
    CharReadings();
    ~CharReadings();

    /// Bits of initialBit(); 0 for a character that cannot be typed so. The first call costs some 10 ms, each further
    /// new character some microseconds.
    quint64 initialsOf(char32_t foldedCharacter);

private:
    class Transliterator;
    std::unique_ptr<Transliterator> transliterator;
    std::unordered_map<char32_t, quint64> known;
};

} // namespace ZB
