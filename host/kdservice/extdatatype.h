#pragma once

namespace kdservice {

/// What kind of value a field holds. The largest value of a number type means that there is no value.
enum EXT_DATA_TYPE : int
{
    ExtInvalid = 0,
    ExtBool = 1,
    ExtInt = 2,
    ExtLong = 3,
    ExtDouble = 4,
    ExtString = 5,
    ExtChar = 6, ///< a one-character code: as text the character, as integer its code
    ExtData = 7  ///< a nested record
};

} // namespace kdservice
