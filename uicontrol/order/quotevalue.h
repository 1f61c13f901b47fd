#pragma once

#include <QtCore/QString>

#include <limits>

#include "uicontrolexport.h"

namespace KV {

/// Values of a quote: what counts as one, and as which text it shows. Any thread.
namespace quotevalue {

constexpr double noPrice = std::numeric_limits<double>::max();
constexpr int noVolume = std::numeric_limits<int>::max();
/// Prices this close to each other are the same price.
constexpr double sameWithin = 1e-5;

/// A number that is there; 0 is one.
UICONTROL_API bool isKnown(double value);
/// A known value that can be a price: not 0.
UICONTROL_API bool isPrice(double value);
/// A volume that is there: not 0, which no level has.
UICONTROL_API bool isVolume(int volume);
/// What a snapshot's volume is in 32 bits: its low ones; no value stays no value.
UICONTROL_API int volumeOf(qint64 volume);
/// The difference of two prices; no value unless both are prices.
UICONTROL_API double change(double latest, double previousClose);

/// Decimals that prices of this tick need, at most 6; 2 when the tick is not known.
UICONTROL_API int decimalsOf(double tick);
/// "-" for what is no price.
UICONTROL_API QString priceText(double price, int decimals);
/// With its sign; "-" for no value.
UICONTROL_API QString changeText(double change, int decimals);
/// The change against the previous close in per cent, with its sign; "-" when either is missing.
UICONTROL_API QString percentText(double change, double previousClose);
/// "-" for what is no volume.
UICONTROL_API QString volumeText(int volume);
/// The text in which a clicked price or volume goes to the host: with four decimals.
UICONTROL_API QString clickedText(double value);
/// A span of time in the largest units that matter: "8秒", "3分05秒", "2小时04分".
UICONTROL_API QString ageText(qint64 seconds);

} // namespace quotevalue

} // namespace KV
