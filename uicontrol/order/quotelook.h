#pragma once

#include <QtGui/QColor>
#include <QtGui/QFont>

namespace KV {

/// Colours and fonts of a ladder. The resource service owns them; looked up once per theme or scale change. Part of
/// CQuotesGraphWidget, and not exported.
struct QuoteLook
{
    const QFont *nameFont;
    const QFont *numberFont;
    const QColor *background;
    const QColor *line;
    const QColor *askArea;
    const QColor *bidArea;
    const QColor *middleBand;
    const QColor *bestAsk;
    const QColor *bestBid;
    const QColor *hover;
    const QColor *text;
    const QColor *grey; ///< everything of a quote that is out of date
    const QColor *rise;
    const QColor *fall;
    const QColor *equal;
    const QColor *askBar;
    const QColor *bidBar;
    const QColor *staleBar; ///< weaker than the sides': grey numbers stand on it
    const QColor *button;
    const QColor *buttonHover;
    const QColor *buttonBorder;
    const QColor *buttonText;
    const QColor *cursor;
    const QColor *warning; ///< words that say why a quote is out of date

    static QuoteLook fromResources();
};

} // namespace KV
