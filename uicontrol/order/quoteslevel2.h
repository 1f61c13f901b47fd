#pragma once

#include <QtCore/QString>

#include "order/quoteslayout.h"

namespace KV {

/// What both level-2 layouts are made of.
namespace quoteslevel2 {

/// At 100 %.
constexpr int margin = 8;
constexpr int cancelMark = 12;

int barHeight();
/// Height of a row of buttons or price types.
int buttonHeight(const QuotesMetrics &metrics);
/// The pitch with which `rows` rows fill `room`: at least a line of text, and not too loose for the eye. A theme with
/// large letters and little height gets close rows.
int fittingPitch(int room, int rows, const QuotesMetrics &metrics);
/// Cuts a rectangle into `count` parts of one width with small gaps.
std::vector<QRect> split(const QRect &rect, int count);
/// Three price types side by side.
std::vector<QuotePriceTypePlace> priceTypes(const QRect &rect);
/// What a price type's button says; one of those three.
QString captionOf(EPriceType type);
/// What a cancel button does, and with how many orders it would do it.
QString cancelCaption(bool sell);
QString cancelText(bool sell, qint64 orders);

} // namespace quoteslevel2

} // namespace KV
