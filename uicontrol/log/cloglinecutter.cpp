#include "log/cloglinecutter.h"

#include <QtCore/QMap>
#include <QtCore/QSet>
#include <algorithm>
#include <utility>

namespace KV {

namespace {

constexpr int firstCount = 10;         ///< characters at which the first piece is measured first
constexpr int nextCount = 11;          ///< the same for every later piece
constexpr ushort endOfMeasured = 0x9C; ///< QFontMetrics measures a text up to this character only
constexpr int longestWhole = 1 << 18;  ///< characters; longer lines are wider than any window
constexpr int longestComplex = 1536;   ///< characters of a piece with complex ones; no window shows as many

/// The most that one more character can add to a text's width, which includes what it changes in those before it.
qint64 mostAdded(ushort unit, int advance, EWidthKind kind)
{
    if (unit == u'\t')
        return advance + 64; // a whole stop, rounded
    switch (kind) {
    case EWidthKind::Exact:
        return advance;
    case EWidthKind::Shaped:
        return advance + advance / 4 + 32;
    case EWidthKind::Complex:
        break;
    }
    return 2LL * advance + 8 * 64;
}

/// Characters without a script of their own, which take the font of the script around them.
bool takesScript(ushort unit)
{
    const QChar::Script script = QChar::script(unit);
    return script == QChar::Script_Common || script == QChar::Script_Inherited;
}

/// Control characters whose width depends on what has been measured before. Fontconfig does not count blank ones among
/// a font's characters, so that a missing one alone loads no other font; once anything else has loaded one that holds
/// it, it is drawn from there. Qt gives the ones left out here no glyph at all.
bool dependsOnHistory(ushort unit)
{
    return unit < u' ' && unit != u'\t' && unit != u'\n' && unit != u'\f' && unit != u'\r';
}

/// Characters that stand on, in or behind others. A text does not grow narrower by one.
bool isWeightless(ushort unit)
{
    switch (QChar::category(unit)) {
    case QChar::Mark_NonSpacing:
    case QChar::Mark_Enclosing:
    case QChar::Other_Control:
    case QChar::Other_Format:
        return true;
    default:
        return false;
    }
}

} // namespace

void CLogLineCutter::cut(const ushort *text, int length, int width, std::vector<int> &lengths)
{
    Line line{text, length, width < 0 ? 0 : 64LL * width + 32};
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
int CLogLineCutter::firstTooLong(Line &line, int start, int shortest)
{
    const int last = line.length - start - 1;
    const ushort *const text = line.text + start;
    const int pitch = textMeasure.asciiPitch();
    int count = 0;
    qint64 width = 0;
    while (count < last) {
        if (pitch > 0) {
            const qint64 missing = std::max<qint64>((line.limit - width + pitch - 1) / pitch, shortest - count);
            const int run = CLogTextMeasure::printableRun(
                text + count, static_cast<int>(std::clamp<qint64>(missing, 1, last - count)));
            count += run;
            width += static_cast<qint64>(run) * pitch;
        }
        if (count < last && (pitch == 0 || width < line.limit || count < shortest)) {
            const LogCharWidth added = textMeasure.charWidth(text[count]);
            if (added.kind != EWidthKind::Exact)
                return searchShaped(line, start, shortest, count, width);
            width = text[count] == u'\t' ? CLogTextMeasure::afterTab(width) : width + added.advance;
            ++count;
        }
        if (count >= shortest && width >= line.limit)
            return count;
    }
    return -1;
}

/// Goes on from `count` characters that are `width` wide, measuring truly wherever the most that the characters since
/// the last measurement can have added reaches the limit.
int CLogLineCutter::searchShaped(Line &line, int start, int shortest, int count, qint64 width)
{
    const int last = line.length - start - 1;
    const ushort *const text = line.text + start;
    bool scriptSet = !std::all_of(text, text + count, takesScript);
    qint64 most = width;
    int fits = count;
    int run = 0;        // of characters without weight
    bool ended = false; // nothing behind is measured
    bool complex = false;
    bool open = false; // the bound says nothing before the next measurement
    while (count < last) {
        if (dependsOnHistory(text[count]))
            settle(line);
        const LogCharWidth added = textMeasure.charWidth(text[count]);
        EWidthKind kind = added.kind;
        if (kind == EWidthKind::Shaped && takesScript(text[count]))
            kind = EWidthKind::Complex; // the script before it may bring a font in which it is twice as wide
        most += mostAdded(text[count], added.advance, kind);
        // Behind a complex character no bound holds: it may change what is before it, and others may take fonts in
        // which nobody has tried them. Nor does one where the first script of its own may change the font of all
        // before. Every count is measured then, which one measurement of the whole line may spare.
        if (added.kind == EWidthKind::Complex && !complex && start == 0 && fitsWhole(line))
            return -1;
        complex = complex || added.kind == EWidthKind::Complex;
        const bool setsScript = !scriptSet && !takesScript(text[count]);
        scriptSet = scriptSet || setsScript;
        open = open || complex || setsScript;
        run = isWeightless(text[count]) ? run + 1 : 0;
        ended = ended || text[count] == endOfMeasured;
        ++count;
        if (complex && !ended && count > longestComplex)
            return count;
        if (count < shortest || (most < line.limit && !open)) {
            fits = count;
            continue;
        }
        // A run of accents, joiners or controls is one thing: its ends and few places between are measured.
        if (run > 4 && (run & (run - 1)) != 0 && !ended && count < std::min(last, longestComplex))
            continue;
        most = textMeasure.trueWidthFine(text, count);
        open = false;
        if (most >= line.limit)
            return firstTooLongBetween(line, start, fits, count);
        if (ended)
            return -1;
        fits = count;
    }
    return -1;
}

/// The smallest count above `fits` for which that many characters are too wide, where `count` characters are.
int CLogLineCutter::firstTooLongBetween(const Line &line, int start, int fits, int count)
{
    while (count - fits > 1) {
        const int middle = fits + (count - fits) / 2;
        (textMeasure.trueWidthFine(line.text + start, middle) < line.limit ? fits : count) = middle;
    }
    return count;
}

/// Whether the whole line is narrow enough although a part of it is not.
bool CLogLineCutter::fitsWhole(Line &line)
{
    if (line.length > longestWhole)
        return false;
    EWidthKind worst = EWidthKind::Exact;
    qint64 least = 0; // no shaping makes spacing characters half as wide
    int length = 0;
    for (; length < line.length && least < line.limit && line.text[length] != endOfMeasured; ++length) {
        const ushort unit = line.text[length];
        if (dependsOnHistory(unit))
            settle(line);
        const LogCharWidth width = textMeasure.charWidth(unit);
        worst = std::max(worst, width.kind);
        if (width.kind != EWidthKind::Complex && unit != u'\t')
            least += width.advance / 2;
    }
    if (worst == EWidthKind::Exact || least >= line.limit)
        return false;
    if (worst == EWidthKind::Complex && length > longestComplex)
        return false;
    return textMeasure.trueWidthFine(line.text, length) < line.limit;
}

/// Has every font loaded that measuring any part of the line can load, so that all measurements from now on agree.
/// Which one it is depends on a character and on the script that it takes: its own, that of another in the line, or
/// none. (Joiners also take the font of what stands right before them: hence the spaces.)
void CLogLineCutter::settle(Line &line)
{
    if (std::exchange(line.settled, true))
        return;
    QSet<uint> seen;
    QString ofScripts; // side by side, each keeps its own
    QString withoutScript;
    QString marks;                        // have one, but take that of the letter before
    QMap<QChar::Script, QString> letters; // one of each script
    for (int i = 0; i < line.length; ++i)
        textMeasure.charWidth(line.text[i]); // what it tries loads fonts too
    const QString whole = QString::fromRawData(reinterpret_cast<const QChar *>(line.text), line.length);
    for (const uint ucs4 : whole.toUcs4()) {
        if (ucs4 == endOfMeasured || seen.contains(ucs4))
            continue;
        seen.insert(ucs4);
        const QString character = QString::fromUcs4(&ucs4, 1);
        const QChar::Script script = QChar::script(ucs4);
        if (script > QChar::Script_Common)
            letters.insert(script, character);
        QString &group = script <= QChar::Script_Common ? withoutScript : QChar::isMark(ucs4) ? marks : ofScripts;
        group += QLatin1Char(' ') + character;
    }
    textMeasure.trueWidth(ofScripts);
    textMeasure.trueWidth(withoutScript);
    for (const QString &letter : qAsConst(letters))
        textMeasure.trueWidth(letter + withoutScript + marks);
}

} // namespace KV
