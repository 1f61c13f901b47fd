#include "grid/glyphstore.h"

#include <QtGui/QFontInfo>
#include <QtGui/QFontMetricsF>
#include <QtGui/QImage>
#include <QtGui/QPainter>
#include <algorithm>

#include "text/spacingscript.h"

namespace ZB {

namespace {

QFont inDevicePixels(QFont font, double pixelRatio)
{
    font.setPixelSize(std::max(1, qRound(QFontInfo(font).pixelSize() * pixelRatio)));
    font.setStyleStrategy(static_cast<QFont::StyleStrategy>(font.styleStrategy() | QFont::NoSubpixelAntialias));
    return font;
}

} // namespace

bool GlyphStore::canDraw(QChar character)
{
    if (character.unicode() < 0x250)
        return true;
    if (character.isSurrogate() || character.isMark() || character.direction() == QChar::DirR ||
        character.direction() == QChar::DirAL || character.category() == QChar::Other_Format)
        return false;
    return core::isSpacingScript(character.script());
}

GlyphStore::GlyphStore(const QFont &askedFont, double pixelRatio) : font(inDevicePixels(askedFont, pixelRatio))
{
    const QFontMetricsF metrics(font);
    ascending = qRound(metrics.ascent());
    descending = qRound(metrics.descent());
}

GlyphStore::~GlyphStore() = default;

bool GlyphStore::isFor(const QFont &other, double pixelRatio) const
{
    return inDevicePixels(other, pixelRatio) == font;
}

bool GlyphStore::canDraw(const QString &text)
{
    return std::all_of(text.begin(), text.end(), [](QChar character) { return canDraw(character); });
}

const GlyphStore::Glyph &GlyphStore::glyph(QChar character) const
{
    auto &page = pages[character.row()];
    if (!page)
        page = std::make_unique<Page>();
    auto &entry = (*page)[character.cell()];
    if (!entry)
        entry = makeGlyph(character);
    return *entry;
}

std::unique_ptr<GlyphStore::Glyph> GlyphStore::makeGlyph(QChar character) const
{
    if (character.category() == QChar::Other_Control)
        character = QLatin1Char(' ');
    auto made = std::make_unique<Glyph>();
    made->advance = qRound(QFontMetricsF(font).horizontalAdvance(character));
    const int border = height(); // room for strokes that leave the character's own cell
    QImage picture(made->advance + 2 * border, 3 * border, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setFont(font);
    painter.setPen(Qt::white);
    painter.drawText(QPoint(border, 2 * border), QString(character));
    painter.end();

    for (int y = 0; y < picture.height(); ++y) {
        const auto *line = reinterpret_cast<const QRgb *>(picture.constScanLine(y));
        for (int x = 0; x < picture.width(); ++x) {
            if (qAlpha(line[x]) == 0)
                continue;
            if (made->shape.lines.empty() || made->shape.lines.back().y != y - 2 * border)
                made->shape.lines.push_back({y - 2 * border, 0});
            ++made->shape.lines.back().dots;
            made->shape.dots.push_back({static_cast<qint16>(x - border), static_cast<quint16>(qAlpha(line[x]))});
            made->shape.extent |= QRect(x - border, y - 2 * border, 1, 1);
        }
    }
    return made;
}

int GlyphStore::width(const QString &text) const
{
    int sum = 0;
    for (const QChar character : text)
        sum += advance(character);
    return sum;
}

int GlyphStore::fitting(const QString &text, int width) const
{
    int count = 0;
    for (const QChar character : text) {
        width -= advance(character);
        if (width < 0)
            break;
        ++count;
    }
    return count;
}

int GlyphStore::draw(GridCanvas &canvas, int x, int baseline, const QString &text, int count,
                     const GridTint &tint) const
{
    for (int i = 0; i < count; ++i) {
        const Glyph &drawn = glyph(text.at(i));
        canvas.blendShape(x, baseline, drawn.shape, tint);
        x += drawn.advance;
    }
    return x;
}

} // namespace ZB
