#pragma once

#include <QtCore/QString>
#include <QtGui/QFont>
#include <array>
#include <memory>
#include <vector>

#include "frameworkexport.h"
#include "grid/gridcanvas.h"

namespace ZB {

/// The shapes of single characters of one font as inked device pixels, made when first needed and kept. Drawing with
/// them costs about a tenth of QPainter::drawText, and nothing extra for a text that was never seen before.
///
/// Every character advances by whole pixels, so that figures of equal width stand exactly below one another in right
/// aligned columns. Only scripts whose characters stand for themselves are drawn so; canDraw() tells. GUI thread.
class FRAMEWORK_API GlyphStore
{
public:
    /// pixelRatio: device pixels per device-independent pixel.
    GlyphStore(const QFont &font, double pixelRatio);
    ~GlyphStore();

    GlyphStore(const GlyphStore &) = delete;
    GlyphStore &operator=(const GlyphStore &) = delete;

    /// Whether a store of that font at that ratio would be the same.
    bool isFor(const QFont &font, double pixelRatio) const;
    /// The font in device pixels, for texts that need shaping.
    const QFont &deviceFont() const { return font; }
    int ascent() const { return ascending; }
    int height() const { return ascending + descending; }

    /// False for texts with combining, right-to-left or shaped characters, and characters outside the basic plane.
    static bool canDraw(QChar character);
    static bool canDraw(const QString &text);
    /// Advance of one character; control characters count as blanks.
    int advance(QChar character) const { return glyph(character).advance; }
    int width(const QString &text) const;
    /// How many characters from the beginning fit into a width; stops measuring there.
    int fitting(const QString &text, int width) const;
    /// Draws the first `count` characters; returns the x behind them.
    int draw(GridCanvas &canvas, int x, int baseline, const QString &text, int count, const GridTint &tint) const;

private:
    struct Glyph
    {
        int advance = 0;
        GridShape shape; ///< from the pen on the baseline
    };
    using Page = std::array<std::unique_ptr<Glyph>, 256>;

    const Glyph &glyph(QChar character) const;
    std::unique_ptr<Glyph> makeGlyph(QChar character) const;

    QFont font;
    int ascending;
    int descending;
    mutable std::array<std::unique_ptr<Page>, 256> pages;
};

} // namespace ZB
