#pragma once

#include <QtCore/QHash>
#include <QtCore/QRect>
#include <QtCore/QString>
#include <array>
#include <memory>

#include "frameworkexport.h"
#include "grid/glyphstore.h"
#include "grid/gridlook.h"
#include "grid/textpicturecache.h"

namespace ZB {

class GridCanvas;

/// What a text of the grid is, which decides about its font.
enum class GridFont
{
    Text,
    TextBold,
    Number,
    NumberBold,
    RowNumber,
    Header,
    Statistics,
    StatisticsBold
};
constexpr int gridFontCount = 8;

/// What happens to a text that does not fit.
enum class GridCut
{
    Ellipsis,
    Hashes ///< "###": a number must not show its first digits only
};

/// Where a text goes. Made by GridText::place().
struct GridPlacedText
{
    int x = 0;
    int baseline = 0;
    int count = 0; ///< characters of the text that are drawn
    QString tail;  ///< drawn behind them: ellipsis or hashes
    bool cut = false;
    bool simple = true; ///< drawn character by character, so that parts of it can be found
};

/// One line of text in a rectangle, in the fonts of a look. Device pixels. GUI thread.
class FRAMEWORK_API GridText
{
public:
    GridText();
    ~GridText();

    void setLook(const GridLook &look, double pixelRatio);

    const GlyphStore &glyphs(GridFont font) const { return *stores[static_cast<size_t>(font)]; }
    /// Width of a text; texts beyond 1,000 characters count as that long.
    int width(const QString &text, GridFont font) const;

    GridPlacedText place(const QRect &rect, const QString &text, GridFont font, Qt::Alignment alignment,
                         GridCut cut) const;
    void draw(GridCanvas &canvas, const GridPlacedText &placed, const QString &text, GridFont font, QRgb color);
    /// place() and draw().
    void draw(GridCanvas &canvas, const QRect &rect, const QString &text, GridFont font, Qt::Alignment alignment,
              GridCut cut, QRgb color);

private:
    GridPlacedText placeShaped(const QRect &rect, const QString &text, GridFont font, Qt::Alignment alignment,
                               GridCut cut) const;
    int shapedWidth(const QString &text, GridFont font) const;
    void align(GridPlacedText &placed, const QRect &rect, int width, GridFont font, Qt::Alignment alignment) const;

    std::array<std::shared_ptr<GlyphStore>, gridFontCount> stores;       ///< equal fonts share one
    mutable std::array<QHash<QString, int>, gridFontCount> shapedWidths; ///< shaping costs more than drawing
    TextPictureCache pictures;
    GridTints tints;
};

} // namespace ZB
