#pragma once

#include <QtCore/QString>
#include <string>

#include "hostexport.h"
#include "utils/eformatnumberflag.h"

namespace ZB {

using utils::CFlags;

/// Numbers as text. Every function may be called on any thread. The largest value of a type (for doubles within 1e-05,
/// relative for the extreme ends) means no value and gives "-". Doubles are rounded half away from zero on their
/// decimal value as written with 15 significant digits, so that 1.005 with two decimals is 1.01 and 15.929999999999999
/// is 15.93. Units: FormatUnit switches at 10,000 (万) and 100,000,000 (亿) by the value after rounding; a value in a
/// unit has two decimals unless `precision` says more. "-0" is never shown.

/// precision: decimals behind a unit or a percentage; without either it has no effect on an integer.
HOST_API QString formatIntNumber(int value, int precision, CFlags<utils::EFormatNumberFlag> flags);
HOST_API QString formatLonglongNumber(qint64 value, int precision, CFlags<utils::EFormatNumberFlag> flags);
/// absentAsEmpty: no value gives an empty text instead of "-". invalidText: for NaN and infinities.
HOST_API QString formatDoubleNumber(long double value, int precision, CFlags<utils::EFormatNumberFlag> flags,
                                    bool absentAsEmpty, const QString &invalidText);
/// The same with groups of three digits separated by a blank when the flags ask for groups.
HOST_API QString formatDoubleNumberSpace(long double value, int precision, CFlags<utils::EFormatNumberFlag> flags,
                                         bool absentAsEmpty, const QString &invalidText);
/// A price: never in units, "-" for no value and for values that are no price (0, NaN, infinities).
HOST_API QString formatPriceDoubleNumber(double price, int precision, CFlags<utils::EFormatNumberFlag> flags);

/// A record's byte string (UTF-8) as a display string; bytes that are no UTF-8 are read as GB18030.
HOST_API QString sToQs(const std::string &text);

/// "clr_global_rise", "clr_global_fall" or "clr_global_equal" for a price against a base; equal within 1e-05 and when
/// either is no value. Static text.
HOST_API const char *getStockColorKey(double price, double base);

} // namespace ZB
