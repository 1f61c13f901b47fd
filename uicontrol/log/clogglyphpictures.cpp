#include "log/clogglyphpictures.h"

#include <QtGui/QGlyphRun>
#include <QtGui/QPainter>
#include <QtGui/QTextLayout>
#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

namespace KV {

namespace {

constexpr qint64 mostKept = 16 << 20; ///< bytes of pictures
constexpr int reach = 3;              ///< row heights that ink may stand away from its glyph's place
constexpr quint32 missingGlyph = 0;   ///< Qt draws a box instead
constexpr quint32 fractions = 64;     ///< places between two pixels, as many as Qt knows

bool isWhole(double length)
{
    return length == std::floor(length);
}

/// The smallest rectangle outside of which every pixel is paper.
QRect inkBox(const QRgb *pixels, const QSize &size, QRgb paper)
{
    QRect box;
    for (int y = 0; y < size.height(); ++y)
        for (int x = 0; x < size.width(); ++x)
            if (*pixels++ != paper)
                box |= QRect(x, y, 1, 1);
    return box;
}

/// Characters for which Qt's ways of drawing differ; hardly any log has them.
bool isSpecial(QChar ch)
{
    return ch.isSurrogate() || (ch < QLatin1Char(' ') && ch != QLatin1Char('\t'));
}

/// Where a span lies: -1 left of the mark, 1 right of it, 0 inside; none when the mark's edge cuts it.
std::optional<int> sideOf(int from, int to, int markFrom, int markTo)
{
    if (to <= markFrom)
        return -1;
    if (from >= markTo)
        return 1;
    return from >= markFrom && to <= markTo ? std::optional<int>(0) : std::nullopt;
}

} // namespace

CLogGlyphPictures::CLogGlyphPictures() = default;

CLogGlyphPictures::~CLogGlyphPictures() = default;

void CLogGlyphPictures::use(const Style &wanted, double pixelRatio)
{
    const int wantedRatio = isWhole(pixelRatio) ? static_cast<int>(pixelRatio) : 0;
    const bool isSame = ratio == wantedRatio && style.font == wanted.font && style.text == wanted.text &&
                        style.background == wanted.background && style.match == wanted.match &&
                        style.lineHeight == wanted.lineHeight && style.baseline == wanted.baseline;
    if (isSame)
        return;
    style = wanted;
    ratio = wantedRatio;
    faces.clear();
    keptBytes = 0;
}

const QImage *CLogGlyphPictures::draw(const QString &text, int width, int left, int right, const Spans &marks)
{
    if (ratio == 0 || std::any_of(text.begin(), text.end(), isSpecial))
        return nullptr;
    if (keptBytes > mostKept) {
        faces.clear();
        keptBytes = 0;
    }
    QTextLayout layout(text, style.font);
    QTextOption option;
    option.setWrapMode(QTextOption::NoWrap);
    layout.setTextOption(option);
    layout.beginLayout();
    const QTextLine line = layout.createLine();
    layout.endLayout();
    if (!line.isValid() || line.textLength() != text.size() || !place(line, left, marks))
        return nullptr;

    const QSize size = QSize(width, style.lineHeight) * ratio;
    if (row.size() != size)
        row = QImage(size, QImage::Format_RGB32);
    row.setDevicePixelRatio(ratio);
    fill(0, size.width(), style.background);
    for (const auto &[x, markWidth] : marks)
        fill(x * ratio, (x + markWidth) * ratio, style.match);
    auto *const pixels = reinterpret_cast<QRgb *>(row.bits());
    for (const Placed &glyph : placed)
        if (glyph.isCopied)
            copyInk(pixels, glyph, std::min(right * ratio, size.width()));
    drawOthers(right);
    return &row;
}

/// False when the text is not simply one glyph beside the other.
bool CLogGlyphPictures::place(const QTextLine &line, int left, const Spans &marks)
{
    placed.clear();
    inkEnd = std::numeric_limits<int>::min();
    const QList<QGlyphRun> runs = line.glyphRuns();
    for (const QGlyphRun &run : runs) {
        if (run.isRightToLeft() || !run.rawFont().isValid())
            return false;
        Face &face = faceOf(run.rawFont());
        const QVector<quint32> glyphs = run.glyphIndexes();
        const QVector<QPointF> positions = run.positions();
        for (int i = 0; i < glyphs.size(); ++i) {
            const QPointF place(left + positions[i].x(), positions[i].y() - line.ascent());
            if (glyphs[i] == missingGlyph || place.y() != 0 || !placeGlyph(face, glyphs[i], place, marks))
                return false;
        }
    }
    return true;
}

bool CLogGlyphPictures::placeGlyph(Face &face, quint32 glyph, const QPointF &place, const Spans &marks)
{
    const double x = place.x() * ratio;
    const double fraction = (x - std::floor(x)) * fractions;
    const auto pixel = static_cast<int>(std::floor(x));
    const Picture *picture = &pictureOf(face, glyph, static_cast<int>(fraction), false);
    if (!picture->isUsable || !isWhole(fraction))
        return false;
    if (picture->box.isEmpty())
        return true;
    const int from = pixel + picture->box.left();
    const int to = from + picture->box.width();
    bool isCopied = true;
    const int farthest = from - 2 * reach * style.lineHeight * ratio; // ink that starts there ends before this one
    for (auto before = placed.rbegin(); from < inkEnd && before != placed.rend() && before->from > farthest; ++before)
        if (before->to > from && before->from < to)
            before->isCopied = isCopied = false;
    inkEnd = std::max(inkEnd, to);
    for (const auto &[markX, markWidth] : marks) {
        const std::optional<int> side = sideOf(from, to, markX * ratio, (markX + markWidth) * ratio);
        if (side == 0)
            picture = &pictureOf(face, glyph, static_cast<int>(fraction), true);
        isCopied = isCopied && side;
    }
    placed.push_back({&face, glyph, place, picture, from, to, isCopied});
    return true;
}

/// Draws the glyphs that cannot be copied, since pixels of theirs are not theirs alone.
void CLogGlyphPictures::drawOthers(int right)
{
    QVector<quint32> glyphs;
    QVector<QPointF> places;
    for (auto glyph = placed.begin(); glyph != placed.end(); ++glyph) {
        if (glyph->isCopied)
            continue;
        glyphs.append(glyph->glyph);
        places.append(glyph->place);
        const auto next = std::find_if(glyph + 1, placed.end(), [](const Placed &other) { return !other.isCopied; });
        if (next != placed.end() && next->face == glyph->face)
            continue;
        QGlyphRun run;
        run.setRawFont(glyph->face->font);
        run.setGlyphIndexes(glyphs);
        run.setPositions(places);
        QPainter painter(&row);
        painter.setClipRect(QRect(0, 0, right, style.lineHeight));
        painter.setPen(style.text);
        painter.drawGlyphRun(QPointF(0, style.baseline), run);
        glyphs.clear();
        places.clear();
    }
}

CLogGlyphPictures::Face &CLogGlyphPictures::faceOf(const QRawFont &font)
{
    for (const auto &face : faces)
        if (face->font == font)
            return *face;
    faces.push_back(std::make_unique<Face>());
    faces.back()->font = font;
    return *faces.back();
}

const CLogGlyphPictures::Picture &CLogGlyphPictures::pictureOf(Face &face, quint32 glyph, int fraction, bool isMarked)
{
    Pictures &pictures = isMarked ? face.marked : face.plain;
    const auto [entry, isNew] = pictures.try_emplace(glyph * fractions + static_cast<quint32>(fraction));
    if (isNew) {
        entry->second = makePicture(face.font, glyph, static_cast<double>(fraction) / fractions,
                                    isMarked ? style.match : style.background);
        keptBytes +=
            static_cast<qint64>(sizeof(Picture)) + static_cast<qint64>(entry->second.ink.size() * sizeof(QRgb));
    }
    return entry->second;
}

/// Draws a glyph with room on both sides and keeps what is not background.
CLogGlyphPictures::Picture CLogGlyphPictures::makePicture(const QRawFont &font, quint32 glyph, double fraction,
                                                          const QColor &background) const
{
    QImage sheet(QSize(2 * reach + 1, 1) * style.lineHeight * ratio, QImage::Format_RGB32);
    sheet.setDevicePixelRatio(ratio);
    sheet.fill(background);
    QGlyphRun run;
    run.setRawFont(font);
    run.setGlyphIndexes({glyph});
    run.setPositions({QPointF(0, 0)});
    const int origin = reach * style.lineHeight;
    QPainter painter(&sheet);
    painter.setPen(style.text);
    painter.drawGlyphRun(QPointF(origin + fraction / ratio, style.baseline), run);
    painter.end();

    const auto *pixels = reinterpret_cast<const QRgb *>(sheet.constBits());
    const QRect box = inkBox(pixels, sheet.size(), background.rgb());
    Picture picture;
    picture.box = box.translated(-origin * ratio, 0);
    picture.isUsable = box.isEmpty() || (box.left() > 0 && box.right() < sheet.width() - 1);
    picture.ink.reserve(static_cast<std::size_t>(box.width() * box.height()));
    for (int y = box.top(); y <= box.bottom(); ++y) {
        const QRgb *line = pixels + y * sheet.width() + box.left();
        picture.ink.insert(picture.ink.end(), line, line + box.width());
    }
    return picture;
}

void CLogGlyphPictures::fill(int from, int to, const QColor &color)
{
    from = std::clamp(from, 0, row.width());
    to = std::clamp(to, from, row.width());
    auto *line = reinterpret_cast<QRgb *>(row.bits());
    for (int y = 0; y < row.height(); ++y, line += row.width())
        std::fill(line + from, line + to, color.rgb());
}

void CLogGlyphPictures::copyInk(QRgb *pixels, const Placed &glyph, int right) const
{
    const QRect &box = glyph.picture->box;
    const int from = std::max(glyph.from, 0);
    const int to = std::min(glyph.to, right);
    if (from >= to)
        return;
    const QRgb *source = glyph.picture->ink.data() + (from - glyph.from);
    QRgb *target = pixels + box.top() * row.width() + from;
    for (int y = 0; y < box.height(); ++y, source += box.width(), target += row.width())
        std::copy(source, source + (to - from), target);
}

} // namespace KV
