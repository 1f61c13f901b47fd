#include "log/clogsearch.h"

#include <algorithm>

#include "rows/prefetch.h"

namespace KV {

namespace {

constexpr int shortestPiece = 9;  ///< characters of a cut line's pieces but its last one
constexpr std::size_t ahead = 12; ///< pieces by which texts are asked for before they are searched
constexpr std::size_t farAhead = 24;

void addRow(std::vector<int> &rows, std::size_t row)
{
    if (rows.empty() || rows.back() < static_cast<int>(row))
        rows.push_back(static_cast<int>(row));
}

/// Pieces and their texts lie all over the memory; waiting for them is half of a search.
void fetchTextAhead(const QString &text)
{
    constexpr int cacheLine = 32; // characters
    constexpr int most = 256;     // the processor sees by itself where a longer text goes on
    for (int at = 0; at < std::min(text.size(), most); at += cacheLine)
        core::prefetch(text.constData() + at);
}

bool sameLine(const LogTextPtr &a, const LogTextPtr &b)
{
    return a->lineId == b->lineId;
}

/// Up to `count` characters of the same line in front of character `end` of a piece.
QString textBefore(const std::vector<LogTextPtr> &pieces, std::size_t piece, int end, int count)
{
    QString text = pieces[piece]->text.mid(std::max(end - count, 0), std::min(end, count));
    for (std::size_t i = piece; text.size() < count && i > 0 && sameLine(pieces[i - 1], pieces[piece]); --i)
        text.prepend(pieces[i - 1]->text.right(count - text.size()));
    return text;
}

/// Up to `count` characters of the same line from character `start` of a piece on.
QString textAfter(const std::vector<LogTextPtr> &pieces, std::size_t piece, int start, int count)
{
    QString text = pieces[piece]->text.mid(start, count);
    for (std::size_t i = piece + 1; text.size() < count && i < pieces.size() && sameLine(pieces[i], pieces[piece]); ++i)
        text += pieces[i]->text.left(count - text.size());
    return text;
}

} // namespace

void CLogSearch::setText(const QString &text)
{
    wanted = text;
    matcher.setPattern(text);
}

CLogSearch::Hits CLogSearch::find(const std::vector<LogTextPtr> &pieces) const
{
    Hits hits;
    if (wanted.isEmpty())
        return hits;
    for (std::size_t first = 0, last = 0; first < pieces.size(); first = last) {
        if (first + farAhead < pieces.size()) {
            core::prefetch(pieces[first + farAhead].get());
            fetchTextAhead(pieces[first + ahead]->text);
        }
        while (last < pieces.size() && sameLine(pieces[last], pieces[first]))
            ++last;
        findInLine(pieces, first, last, hits);
    }
    return hits;
}

void CLogSearch::findInLine(const std::vector<LogTextPtr> &pieces, std::size_t first, std::size_t last,
                            Hits &hits) const
{
    QString joined;
    if (last - first > 1)
        for (std::size_t i = first; i < last; ++i)
            joined += pieces[i]->text;
    const QString &line = last - first > 1 ? joined : pieces[first]->text;

    std::size_t row = first;
    int rowEnd = pieces[row]->text.size(); // in the line
    for (int at = matcher.indexIn(line); at >= 0; at = matcher.indexIn(line, at + 1)) {
        while (at >= rowEnd)
            rowEnd += pieces[++row]->text.size();
        hits.starts.push_back({static_cast<int>(row), at - rowEnd + pieces[row]->text.size()});
        addRow(hits.rows, row);
        std::size_t next = row + 1; // the occurrence may go on there
        for (int end = rowEnd; end < at + wanted.size(); end += pieces[next++]->text.size())
            addRow(hits.rows, next);
    }
}

int CLogSearch::contextPieces() const
{
    return wanted.size() / shortestPiece + 2;
}

std::vector<LogRange> CLogSearch::marks(const std::vector<LogTextPtr> &pieces, std::size_t piece, int from,
                                        int to) const
{
    std::vector<LogRange> ranges;
    if (wanted.isEmpty() || from >= to)
        return ranges;
    const int reach = wanted.size() - 1;
    const QString before = textBefore(pieces, piece, from, reach);
    const QString text = before + pieces[piece]->text.mid(from, to - from) + textAfter(pieces, piece, to, reach);
    const int origin = from - before.size(); // of `text`, in the piece
    for (int at = matcher.indexIn(text); at >= 0; at = matcher.indexIn(text, at + 1)) {
        const int start = std::max(origin + at, from);
        const int end = std::min(origin + at + wanted.size(), to);
        if (start >= end)
            continue;
        if (!ranges.empty() && ranges.back().start + ranges.back().length >= start)
            ranges.back().length = end - ranges.back().start;
        else
            ranges.push_back({start, end - start});
    }
    return ranges;
}

} // namespace KV
