#include "grid/gridtext.h"

#include <QtGui/QFontMetrics>
#include <algorithm>

#include "grid/gridcanvas.h"

namespace ZB {

namespace {

constexpr int longestText = 1000;
const QChar ellipsis(0x2026);

QFont boldened(QFont font)
{
    font.setBold(true);
    return font;
}

} // namespace

GridText::GridText()
{
    setLook(GridLook(), 1.0);
}

GridText::~GridText() = default;

void GridText::setLook(const GridLook &look, double pixelRatio)
{
    const std::array<QFont, gridFontCount> fonts = {
        look.textFont,      boldened(look.textFont), look.numberFont,     boldened(look.numberFont),
        look.rowNumberFont, look.headerFont,         look.statisticsFont, boldened(look.statisticsFont)};
    const auto before = stores; // a theme has other colours more often than other fonts
    for (size_t i = 0; i < fonts.size(); ++i) {
        const auto same = [&](const auto &store) { return store && store->isFor(fonts[i], pixelRatio); };
        const auto kept = std::find_if(before.begin(), before.end(), same);
        const auto shared = std::find_if(stores.begin(), stores.begin() + static_cast<qint64>(i), same);
        if (kept != before.end())
            stores[i] = *kept;
        else
            stores[i] = shared != stores.begin() + static_cast<qint64>(i)
                            ? *shared
                            : std::make_shared<GlyphStore>(fonts[i], pixelRatio);
    }
    if (stores == before)
        return;
    pictures.clear();
    for (auto &widths : shapedWidths)
        widths.clear();
}

int GridText::width(const QString &text, GridFont font) const
{
    const QString start = text.left(longestText);
    if (GlyphStore::canDraw(start))
        return glyphs(font).width(start);
    return shapedWidth(start, font);
}

int GridText::shapedWidth(const QString &text, GridFont font) const
{
    constexpr int mostWidths = 4096;
    auto &widths = shapedWidths[static_cast<size_t>(font)];
    const auto known = widths.constFind(text);
    if (known != widths.constEnd())
        return *known;
    if (widths.size() >= mostWidths)
        widths.clear();
    return *widths.insert(text, QFontMetrics(glyphs(font).deviceFont()).horizontalAdvance(text));
}

void GridText::align(GridPlacedText &placed, const QRect &rect, int width, GridFont font, Qt::Alignment alignment) const
{
    const GlyphStore &store = glyphs(font);
    const int room = std::max(0, rect.width() - width);
    placed.x = rect.left();
    if (alignment & Qt::AlignRight)
        placed.x += room;
    else if (alignment & Qt::AlignHCenter)
        placed.x += room / 2;
    placed.baseline = rect.top() + (rect.height() - store.height()) / 2 + store.ascent();
}

GridPlacedText GridText::place(const QRect &rect, const QString &text, GridFont font, Qt::Alignment alignment,
                               GridCut cut) const
{
    const GlyphStore &store = glyphs(font);
    GridPlacedText placed;
    int width = 0;
    for (; placed.count < text.size() && width <= rect.width(); ++placed.count) {
        const QChar character = text.at(placed.count);
        if (!GlyphStore::canDraw(character))
            return placeShaped(rect, text, font, alignment, cut);
        width += store.advance(character);
    }
    placed.cut = width > rect.width();
    if (placed.cut) {
        placed.count = 0;
        placed.tail = cut == GridCut::Hashes ? QStringLiteral("###") : QString(ellipsis);
        placed.tail.truncate(store.fitting(placed.tail, rect.width()));
        width = store.width(placed.tail);
        if (cut == GridCut::Ellipsis) {
            placed.count = placed.tail.isEmpty() ? 0 : store.fitting(text, rect.width() - width);
            width += store.width(text.left(placed.count));
            if (!(alignment & Qt::AlignHCenter))
                alignment = Qt::AlignLeft; // the beginning of a text is what tells it from others
        }
    }
    align(placed, rect, width, font, alignment);
    return placed;
}

GridPlacedText GridText::placeShaped(const QRect &rect, const QString &text, GridFont font, Qt::Alignment alignment,
                                     GridCut cut) const
{
    const QFontMetrics metrics(glyphs(font).deviceFont());
    const QString start = text.left(longestText);
    GridPlacedText placed;
    placed.simple = false;
    placed.tail = start;
    int width = shapedWidth(start, font);
    placed.cut = width > rect.width() || start.size() < text.size();
    if (width > rect.width()) {
        placed.tail =
            cut == GridCut::Hashes ? QStringLiteral("###") : metrics.elidedText(start, Qt::ElideRight, rect.width());
        width = shapedWidth(placed.tail, font);
        if (width > rect.width())
            placed.tail.clear();
    }
    align(placed, rect, width, font, alignment);
    return placed;
}

void GridText::draw(GridCanvas &canvas, const GridPlacedText &placed, const QString &text, GridFont font, QRgb color)
{
    const GlyphStore &store = glyphs(font);
    if (!placed.simple) {
        if (!placed.tail.isEmpty())
            canvas.blendPicture(placed.x, placed.baseline - store.ascent(),
                                pictures.picture(placed.tail, store.deviceFont(), static_cast<int>(font), color));
        return;
    }
    const GridTint &tint = tints.tint(canvas.pixelNear(placed.x, placed.baseline), color);
    const int x = store.draw(canvas, placed.x, placed.baseline, text, placed.count, tint);
    if (!placed.tail.isEmpty())
        store.draw(canvas, x, placed.baseline, placed.tail, placed.tail.size(), tint);
}

void GridText::draw(GridCanvas &canvas, const QRect &rect, const QString &text, GridFont font, Qt::Alignment alignment,
                    GridCut cut, QRgb color)
{
    if (!text.isEmpty())
        draw(canvas, place(rect, text, font, alignment, cut), text, font, color);
}

} // namespace ZB
