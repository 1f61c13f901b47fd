#pragma once

namespace kdservice {

/// Entries of a field's display-function table (FieldDes::findFunc): how the shared field formatter turns the raw value
/// into text. The table maps one of these to an argument text whose meaning is given here.
enum EDisplayFunc : int
{
    DisplayEnum = 1,      ///< value of an enumeration; argument: the enumeration's name in the catalogue
    DisplayTime = 2,      ///< milliseconds since 1970 UTC; argument: "time", "timems", "date" or "datetime"
    DisplayDuration = 3,  ///< seconds; shown as hours, minutes, seconds
    DisplayPrice = 4,     ///< a price with the decimals of the record's instrument (field id in the argument, or empty)
    DisplayDirection = 5, ///< buy or sell: the text takes the rise or fall colour
    DisplayChange = 6,    ///< a number whose sign chooses rise, fall or equal colour
    DisplayOptionName = 7,     ///< the name of an option; argument: field id of its code
    DisplayInstrumentName = 8, ///< the name of the instrument whose code is in the field of the argument
    DisplayStatus = 9,         ///< an order's status code; an end without a full fill is dimmed
    DisplayComparePrice = 10   ///< a price coloured against the price in the field of the argument
};

} // namespace kdservice
