// A text is found at every place of a line, whichever pieces the line is cut into, and marked to the character.

#include <boost/make_shared.hpp>
#include <set>

#include "fuzzinput.h"
#include "log/clogsearch.h"

namespace {

using KV::LogTextPtr;

struct Lines
{
    std::vector<LogTextPtr> pieces;
    std::vector<QString> whole;
};

/// Lines of few different characters, so that everything recurs, cut anywhere from nine characters on.
Lines linesFrom(fuzz::Input &input)
{
    Lines lines;
    for (int line = 0; line < 6 && !input.isEmpty(); ++line) {
        QString text;
        for (int length = input.below(48); length > 0; --length)
            text += QChar('a' + input.below(3));
        lines.whole.push_back(text);
        int start = 0;
        do {
            const int length = 9 + input.below(8);
            const auto piece = boost::make_shared<KV::LogTextData>();
            piece->text = text.mid(start, length);
            piece->lineId = line;
            lines.pieces.push_back(piece);
            start += length;
        } while (start < text.size());
    }
    return lines;
}

/// Characters of all lines, counted through, that belong to an occurrence.
std::set<int> plainMarks(const Lines &lines, const QString &wanted)
{
    std::set<int> marked;
    int before = 0;
    for (const QString &line : lines.whole) {
        for (int at = line.indexOf(wanted); at >= 0; at = line.indexOf(wanted, at + 1))
            for (int i = 0; i < wanted.size(); ++i)
                marked.insert(before + at + i);
        before += line.size();
    }
    return marked;
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    fuzz::Input input(bytes, size);
    QString wanted;
    for (int length = input.below(24); length > 0; --length)
        wanted += QChar('a' + input.below(3));
    const Lines lines = linesFrom(input);
    KV::CLogSearch search;
    search.setText(wanted);
    const KV::CLogSearch::Hits hits = search.find(lines.pieces);
    if (wanted.isEmpty()) {
        fuzz::require(hits.starts.empty() && hits.rows.empty(), "an empty text was found");
        return 0;
    }

    std::size_t occurrences = 0;
    for (const QString &line : lines.whole)
        for (int at = line.indexOf(wanted); at >= 0; at = line.indexOf(wanted, at + 1))
            ++occurrences;
    fuzz::require(hits.starts.size() == occurrences,
                  std::to_string(hits.starts.size()) + " places instead of " + std::to_string(occurrences));

    std::set<int> marked;
    std::set<int> rows;
    int before = 0;
    for (std::size_t row = 0; row < lines.pieces.size(); ++row) {
        const int length = lines.pieces[row]->text.size();
        for (const KV::LogRange &range : search.marks(lines.pieces, row, 0, length))
            for (int i = 0; i < range.length; ++i) {
                marked.insert(before + range.start + i);
                rows.insert(static_cast<int>(row));
            }
        before += length;
    }
    fuzz::require(marked == plainMarks(lines, wanted), "other characters are marked than those of the occurrences");
    fuzz::require(rows == std::set<int>(hits.rows.begin(), hits.rows.end()), "other rows are told than are marked");
    return 0;
}
