#include "log/clogtextplaces.h"

#include <QtGui/QTextLayout>
#include <algorithm>

namespace KV {

namespace {

constexpr int longPiece = 1024;      ///< characters; longer pieces are drawn by slices
constexpr int stationDistance = 256; ///< characters
constexpr int keptStations = 1 << 20;

} // namespace

CLogTextPlaces::CLogTextPlaces(const QFont &font)
    : ownFont(CLogTextMeasure::ownCopy(font)), textMeasure(ownFont), longPieces(keptStations)
{
}

int CLogTextPlaces::width(const LogTextPtr &piece)
{
    if (piece->text.size() <= longPiece)
        return textMeasure.width(piece->text);
    return CLogTextMeasure::toPixels(stations(piece).places.constLast());
}

LogSlice CLogTextPlaces::slice(const LogTextPtr &piece, int left, int right)
{
    if (piece->text.size() <= longPiece)
        return {0, piece->text, 0};
    const Stations &all = stations(piece);
    const auto stationBefore = [&all](int pixels) {
        const auto after = std::upper_bound(all.places.begin() + 1, all.places.end() - 1, qint64{pixels} * 64);
        return static_cast<int>(after - all.places.begin()) - 1;
    };
    const int begin = stationBefore(left);
    const int end = std::min(stationBefore(right) + 2, all.characters.size()); // one more: shaped text may be narrower
    LogSlice part;
    part.first = all.characters[begin];
    const int last = end < all.characters.size() ? all.characters[end] : piece->text.size();
    part.text = piece->text.mid(part.first, last - part.first);
    part.x = CLogTextMeasure::toPixels(all.places[begin]);
    return part;
}

const CLogTextPlaces::Stations &CLogTextPlaces::stations(const LogTextPtr &piece)
{
    if (const Stations *known = longPieces.object(piece.get()); known && !known->piece.expired())
        return *known;
    auto *made = new Stations;
    made->piece = piece;
    const ushort *const text = piece->text.utf16();
    qint64 place = 0;
    for (int start = 0; start < piece->text.size();) {
        made->characters.append(start);
        made->places.append(place);
        int end = std::min(start + stationDistance, piece->text.size());
        if (end < piece->text.size() && QChar::isLowSurrogate(text[end]))
            ++end;
        place += textMeasure.sum(text + start, end - start).fine;
        start = end;
    }
    made->places.append(place);
    longPieces.insert(piece.get(), made, std::min(made->characters.size(), keptStations));
    return *made;
}

std::vector<QPair<int, int>> CLogTextPlaces::spans(const LogSlice &slice, const LogRange &range)
{
    if (textMeasure.sum(slice.text).kind == EWidthKind::Complex)
        return shapedSpans(slice.text, range);
    const int left = textMeasure.width(slice.text.left(range.start));
    return {{left, textMeasure.width(slice.text.mid(range.start, range.length))}};
}

std::vector<QPair<int, int>> CLogTextPlaces::shapedSpans(const QString &text, const LogRange &range) const
{
    QTextLayout layout(text, ownFont);
    QTextOption option;
    option.setWrapMode(QTextOption::NoWrap);
    layout.setTextOption(option);
    layout.beginLayout();
    const QTextLine line = layout.createLine();
    layout.endLayout();

    std::vector<QPair<int, int>> cells;
    for (int i = range.start; i < range.start + range.length; ++i) {
        const int leading = qRound(line.cursorToX(i, QTextLine::Leading));
        const int trailing = qRound(line.cursorToX(i, QTextLine::Trailing));
        cells.emplace_back(std::min(leading, trailing), std::abs(trailing - leading));
    }
    std::sort(cells.begin(), cells.end());
    std::vector<QPair<int, int>> merged;
    for (const QPair<int, int> &cell : cells) {
        if (cell.second == 0)
            continue;
        if (!merged.empty() && merged.back().first + merged.back().second >= cell.first)
            merged.back().second = std::max(merged.back().second, cell.first + cell.second - merged.back().first);
        else
            merged.push_back(cell);
    }
    return merged;
}

} // namespace KV
