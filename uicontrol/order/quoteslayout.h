#pragma once

#include <QtCore/QLine>
#include <QtCore/QPoint>
#include <QtCore/QRect>
#include <array>
#include <vector>

#include "kv/epricetype.h"
#include "uicontrolexport.h"

namespace KV {

/// What a ladder's layout needs to know of its fonts; pixels.
struct UICONTROL_API QuotesMetrics
{
    int lineHeight = 0;   ///< of the name font
    int captionWidth = 0; ///< of one character of it
    QSize digit;          ///< cell of a level number

    /// From one row of levels to the next.
    int pitch() const;
};

/// Where one number stands: its text ends at `right`, on `baseline`.
struct UICONTROL_API QuoteValuePlace
{
    int right = 0;
    int room = 0; ///< the text is no wider
    int rowTop = 0;
    int baseline = 0;
    int pitch = 0;
    int lead = 0; ///< by which the area starts further left: summary values

    /// What takes the value when it is clicked, for a text of this width.
    QRect area(int textWidth) const;
};

/// One level of one side.
struct UICONTROL_API QuoteRowPlace
{
    QRect band;     ///< all of the row
    QPoint caption; ///< left end of the baseline
    QPoint digit;   ///< top left corner of the level number
    QuoteValuePlace price;
    QuoteValuePlace volume;
    int barEnd = 0;  ///< where bars start to grow: the right end, or the left one when they grow to the right
    int barMost = 0; ///< length for the largest volume
    bool barGrowsRight = false;
    QRect cancel; ///< of the mark that cancels the orders of this level; empty without one

    /// The bar of a volume among volumes of which `largest` is the largest; empty without one.
    QRect bar(int ofVolume, int largest) const;
};

/// The columns of one side's rows, from which each row is made.
struct UICONTROL_API QuoteColumns
{
    int left = 1; ///< of the rows
    int width = 0;
    int caption = 0;
    int priceRight = 0;
    int priceRoom = 0;
    int volumeRight = 0;
    int volumeRoom = 0;
    int barEnd = 0;
    bool barGrowsRight = false;
    int cancelLeft = 0;
    int cancelWidth = 0; ///< 0 without marks that cancel

    QuoteRowPlace row(int rowTop, int pitch, const QuotesMetrics &metrics) const;
};

struct QuoteSummaryPlace
{
    QPoint caption; ///< left end of the baseline
    QuoteValuePlace value;

    /// left: of the caption's two characters. right: of the value.
    static QuoteSummaryPlace at(int left, int right, int rowTop, int pitch, const QuotesMetrics &metrics);
};

struct QuotePriceTypePlace
{
    QRect rect;
    EPriceType type = PriceLimit;
};

/// Where everything in a ladder is: painting, click areas and tests ask the same one. Pixels of the widget at the
/// present scale; lines are one pixel thick at every scale.
struct UICONTROL_API QuotesLayout
{
    static constexpr int levels = 5;
    /// Of a row's visible top below its nominal one, at 100 %.
    static constexpr int rowLead = 4;
    /// Of the largest volume, at 100 %.
    static constexpr int longestBar = 80;

    QRect frame;
    QRect askArea;
    QRect middleBand;
    QRect bidArea;
    std::vector<QLine> lines;
    QPoint latestCaption; ///< left end of the baseline
    QuoteValuePlace latest;
    QuoteValuePlace change;
    std::array<QuoteRowPlace, levels> asks; ///< best first
    std::array<QuoteRowPlace, levels> bids;
    std::array<QuoteSummaryPlace, 4> summary; ///< current price, previous close, upper limit, lower limit
    QRect age;                                ///< of the words that say how old the quote is; empty without room

    /// The level-2 layouts only.
    QuoteValuePlace percent;
    QRect balanceText; ///< of the two sides' shares of all volumes
    QRect balanceBar;
    std::vector<QuotePriceTypePlace> priceTypes;
    QRect cancelBuy;
    QRect cancelSell;

    /// The part of the balance bar that stands for `share` (0 to 1) of the volumes, from the left.
    QRect balancePart(double share) const;
};

} // namespace KV
