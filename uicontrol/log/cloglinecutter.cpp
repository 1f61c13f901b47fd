#include "log/cloglinecutter.h"

#include <algorithm>
#include <limits>

namespace KV {

namespace {

constexpr int firstCount = 10;          ///< characters at which the first piece is measured first
constexpr int nextCount = 11;           ///< the same for every later piece
constexpr int longestWhole = 1 << 18;   ///< characters; longer lines are wider than any window

/// The most that one more character can add to a text's width, which includes what it changes in those before it.
qint64 mostAdded(const LogCharWidth &width)
{
    switch (width.kind) {
    case EWidthKind::Exact:
        return width.advance;
    case EWidthKind::Shaped:
        return width.advance + width.advance / 2 + 2 * 64;
    case EWidthKind::Complex:
        break;
    }
    return 2LL * width.advance + 8 * 64;
}

/// Characters without a script of their own, which take the font of the script around them.
bool takesScript(ushort unit)
{
    const QChar::Script script = QChar::script(unit);
    return script == QChar::Script_Common || script == QChar::Script_Inherited;
}

} // namespace

void CLogLineCutter::cut(const QString &text, int width, std::vector<int> &lengths)
{
    const Line line{text.utf16(), text.size(), width < 0 ? 0 : 64LL * width + 32};
    if (line.length == 0 && width < 0)
        return;
    int start = 0;
    int shortest = firstCount;
    while (line.length > firstCount) {
        const int count = firstTooLong(line, start, shortest);
        if (count < 0 || (start == 0 && fitsWhole(line)))
            break;
        lengths.push_back(count - 1);
        start += count - 1;
        shortest = nextCount;
    }
    lengths.push_back(line.length - start);
}

/// The smallest count of at least `shortest` for which that many characters from `start` are too wide; -1 when the line
/// ends before one is.
int CLogLineCutter::firstTooLong(const Line &line, int start, int shortest)
{
    const int last = line.length - start - 1;
    int count = 0;
    qint64 width = 0;
    while (count < last) {
        if (textMeasure.asciiPitch() > 0 && skipPrintable(line, start, last, count, width) && count >= last)
            break;
        const ushort unit = line.text[start + count];
        const LogCharWidth added = textMeasure.charWidth(unit);
        if (added.kind != EWidthKind::Exact)
            return searchShaped(line, start, shortest, count, width);
        width = unit == u'\t' ? CLogTextMeasure::afterTab(width) : width + added.advance;
        ++count;
        if (count >= shortest && width >= line.limit)
            return count;
    }
    return -1;
}

} // namespace KV
