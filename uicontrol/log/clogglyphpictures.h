#pragma once

#include <QtCore/QPair>
#include <QtCore/QPointF>
#include <QtCore/QRect>
#include <QtGui/QColor>
#include <QtGui/QFont>
#include <QtGui/QImage>
#include <QtGui/QRawFont>
#include <memory>
#include <unordered_map>
#include <vector>

#include "uicontrolexport.h"

class QTextLine;

namespace KV {

/// Draws rows of text by copying pictures of their glyphs, each of which is drawn once: what QPainter::drawText()
/// draws, in half the time or less. Only glyphs that touch each other or the edge of a mark are drawn anew. GUI thread.
/// Part of CHpfLogWidget, of no use by itself.
class UICONTROL_API CLogGlyphPictures
{
public:
    /// Lengths are in pixels of the widget.
    struct Style
    {
        QFont font;
        QColor text;
        QColor background;
        QColor match; ///< background of marked text
        int lineHeight = 20;
        int baseline = 15; ///< from the row's top
    };
    /// Left edges and widths in pixels of the row, ascending and apart from each other.
    using Spans = std::vector<QPair<int, int>>;

    CLogGlyphPictures();
    ~CLogGlyphPictures();

    /// Throws away what was drawn in another style or for another pixel ratio.
    void use(const Style &style, double pixelRatio);
    /// A row `width` pixels wide with the text starting at `left`, its ink cut off at `right`. Null when the text has
    /// to be drawn the ordinary way, as one that runs from right to left or has characters beyond U+FFFF. Valid until
    /// the next call.
    const QImage *draw(const QString &text, int width, int left, int right, const Spans &marks);

private:
    /// The ink of one glyph on one background, in device pixels.
    struct Picture
    {
        QRect box;             ///< from where the glyph stands and from the row's top; empty for a glyph without ink
        std::vector<QRgb> ink; ///< line by line
        bool isUsable = true;
    };
    using Pictures = std::unordered_map<quint32, Picture>; ///< by glyph and place between two pixels
    struct Face
    {
        QRawFont font;
        Pictures plain;
        Pictures marked;
    };
    struct Placed
    {
        Face *face;
        quint32 glyph;
        QPointF place; ///< in pixels of the row
        const Picture *picture;
        int from; ///< device pixels that the ink takes, up to before `to`
        int to;
        bool isCopied;
    };

    bool place(const QTextLine &line, int left, const Spans &marks);
    bool placeGlyph(Face &face, quint32 glyph, const QPointF &place, const Spans &marks);
    Face &faceOf(const QRawFont &font);
    const Picture &pictureOf(Face &face, quint32 glyph, int fraction, bool isMarked);
    Picture makePicture(const QRawFont &font, quint32 glyph, double fraction, const QColor &background) const;
    void fill(int from, int to, const QColor &color);
    void copyInk(QRgb *pixels, const Placed &glyph, int right) const;
    void drawOthers(int right);

    Style style;
    int ratio = 0; ///< device pixels in a pixel; 0 when that is no whole number
    std::vector<std::unique_ptr<Face>> faces;
    qint64 keptBytes = 0;
    std::vector<Placed> placed;
    int inkEnd = 0; ///< behind the ink of all that is placed
    QImage row;
};

} // namespace KV
