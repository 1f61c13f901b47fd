#include "log/clogtextmeasure.h"

#include <algorithm>
#include <limits>

#include "text/spacingscript.h"

namespace KV {

namespace {

constexpr qint64 tabStop = 80 * 64;  ///< Qt's default distance of tab stops
constexpr int longestShaped = 4096;  ///< characters; longer texts are summed only
constexpr int widthSlack = 24;       ///< pixels by which shaping may pass a sum and its quarter
constexpr ushort ideograph = 0x4E2D; ///< stands for all ideographs where the font is tried out
const ushort firstPrintable = u' ';
const ushort lastPrintable = u'~';

QString printableAscii(bool letters)
{
    QString text;
    for (ushort unit = firstPrintable; unit <= lastPrintable; ++unit)
        if (letters || !QChar(unit).isLetter())
            text += QChar(unit);
    return text;
}

/// A letter of each script whose texts are summed. Characters without a script take that of what stands before them,
/// and with it perhaps another font or other forms.
QString scriptLetters()
{
    return QStringLiteral("aωш中かカㄅ한");
}

bool isIdeograph(ushort unit)
{
    return (unit >= 0x4E00 && unit <= 0x9FFF) || (unit >= 0x3400 && unit <= 0x4DBF);
}

bool isEastAsian(ushort unit)
{
    return (unit >= 0x2E80 && unit <= 0xD7A3) || (unit >= 0xF900 && unit <= 0xFAFF) ||
           (unit >= 0xFF00 && unit <= 0xFF60);
}

/// Scripts whose letters stand side by side, each with a width of its own.
bool isSpacingScript(QChar::Script script, ushort unit)
{
    if (script == QChar::Script_Hangul)
        return unit >= 0xAC00 && unit <= 0xD7A3; // whole syllables; single parts join
    return core::isSpacingScript(script);
}

/// Whether a character takes its own place on the line, from left to right, whatever its neighbours are.
bool isSpacing(ushort unit)
{
    const QChar ch(unit);
    switch (ch.category()) {
    case QChar::Mark_NonSpacing:
    case QChar::Mark_SpacingCombining:
    case QChar::Mark_Enclosing:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
    case QChar::Other_Control:
    case QChar::Other_Format:
    case QChar::Other_Surrogate:
    case QChar::Other_PrivateUse:
    case QChar::Other_NotAssigned:
        return false;
    default:
        break;
    }
    if (ch.direction() == QChar::DirR || ch.direction() == QChar::DirAL || ch.direction() == QChar::DirAN)
        return false;
    return isSpacingScript(ch.script(), unit);
}

} // namespace

CLogTextMeasure::CLogTextMeasure(const QFont &font)
    : ownFont(ownCopy(font)), fontMetrics(ownFont), fineMetrics(fontMetrics)
{
    const QString han = QStringLiteral("中文一龥，。、；：？！（）《》【】「」");
    hanExact = pairsAddUp(QString(), han) && pairsAddUp(QStringLiteral("中"), han);
    asciiExact = hanExact && asciiAddsUp();
    tabExact = asciiExact && tabsAddUp();
    pages = {}; // what was learned during the trials had no verdict yet

    if (asciiExact) {
        pitch = charWidth(firstPrintable).advance;
        for (ushort unit = firstPrintable; unit <= lastPrintable; ++unit)
            if (charWidth(unit).advance != pitch)
                pitch = 0;
    }
}

CLogTextMeasure::~CLogTextMeasure() = default;

QFont CLogTextMeasure::ownCopy(const QFont &font)
{
    QFont copy(font); // only a changed property parts the two
    copy.setKerning(!font.kerning());
    copy.setKerning(font.kerning());
    return copy;
}

int CLogTextMeasure::trueWidth(const QString &text) const
{
    return fontMetrics.horizontalAdvance(text);
}

qint64 CLogTextMeasure::trueWidthFine(const ushort *text, int length)
{
    shaped += length;
    const QString view = QString::fromRawData(reinterpret_cast<const QChar *>(text), length);
    return qRound64(fineMetrics.horizontalAdvance(view) * 64);
}

CLogTextMeasure::Sum CLogTextMeasure::sum(const ushort *text, int length)
{
    Sum result;
    for (int i = 0; i < length;) {
        if (pitch > 0) {
            const int run = printableRun(text + i, length - i);
            result.fine += static_cast<qint64>(run) * pitch;
            i += run;
            if (i == length)
                break;
        }
        const LogCharWidth width = charWidth(text[i]);
        result.fine = text[i] == u'\t' ? afterTab(result.fine) : result.fine + width.advance;
        result.kind = std::max(result.kind, width.kind);
        ++i;
    }
    return result;
}

int CLogTextMeasure::width(const QString &text)
{
    const Sum total = sum(text);
    return total.kind == EWidthKind::Exact ? toPixels(total.fine) : trueWidth(text);
}

int CLogTextMeasure::widest(const ushort *text, int length, int known)
{
    const Sum total = sum(text, length);
    const int pixels = toPixels(total.fine);
    if (total.kind == EWidthKind::Exact || length > longestShaped)
        return std::max(known, pixels);
    if (qint64{pixels} + pixels / 4 + widthSlack <= known)
        return known;
    return std::max(known, toPixels(trueWidthFine(text, length)));
}

qint64 CLogTextMeasure::afterTab(qint64 fine)
{
    // Qt divides its fixed-point numbers with rounding before it counts the stops.
    const qint64 stops = ((fine << 6) + (tabStop >> 1)) / tabStop;
    return ((stops >> 6) + 1) * tabStop;
}

int CLogTextMeasure::printableRun(const ushort *text, int length)
{
    constexpr int stride = 32;
    constexpr ushort span = u'~' - u' ';
    int done = 0;
    for (; done + stride <= length; done += stride) {
        unsigned other = 0; // no early exit inside a stride, so that it is compiled to vector instructions
        for (int i = 0; i < stride; ++i)
            other |= static_cast<ushort>(text[done + i] - firstPrintable) > span;
        if (other)
            break;
    }
    while (done < length && static_cast<ushort>(text[done] - firstPrintable) <= span)
        ++done;
    return done;
}

int CLogTextMeasure::toPixels(qint64 fine)
{
    return static_cast<int>(std::min<qint64>((fine + 32) >> 6, std::numeric_limits<int>::max()));
}

LogCharWidth CLogTextMeasure::learn(ushort unit)
{
    auto &page = pages[unit >> 8];
    if (!page) {
        page = std::make_unique<Page>();
        page->fill(unknown);
    }
    int &entry = (*page)[unit & 255];
    const int advance = static_cast<int>(trueWidthFine(&unit, 1));
    entry = advance << 2 | static_cast<int>(EWidthKind::Complex); // for the trial, which asks for it again
    const EWidthKind kind = kindOf(unit);
    entry = advance << 2 | static_cast<int>(kind);
    return {advance, kind};
}

EWidthKind CLogTextMeasure::kindOf(ushort unit)
{
    if (unit >= firstPrintable && unit <= lastPrintable)
        return asciiExact ? EWidthKind::Exact : EWidthKind::Shaped;
    if (unit == u'\t')
        return tabExact ? EWidthKind::Exact : EWidthKind::Shaped;
    if (isIdeograph(unit))
        return hanExact ? EWidthKind::Exact : EWidthKind::Shaped;
    const bool ends = unit == u'\r'; // of lines from other systems: without width
    if (!ends && !isSpacing(unit))
        return EWidthKind::Complex;
    if (!hanExact || (!asciiExact && !isEastAsian(unit))) // what stands in the Latin font may kern with its letters
        return EWidthKind::Shaped;

    return addsUpEverywhere(QChar(unit)) ? EWidthKind::Exact : EWidthKind::Shaped;
}

/// Whether a character has its own width among ideographs, beside itself, and in texts of every script.
bool CLogTextMeasure::addsUpEverywhere(QChar ch)
{
    QString trial;
    for (const QChar neighbour : asciiExact ? QStringLiteral("1 (a.中，") : QStringLiteral("中，"))
        trial += QString(ch) + neighbour;
    trial += ch;
    trial += ch;
    if (!addsUp(trial) || !addsUp(QChar(ideograph) + trial) || !addsUp(QStringLiteral("1") + ch))
        return false;
    const QString neighbours = scriptLetters() + QStringLiteral("fTVWy(\"");
    return std::all_of(neighbours.begin(), neighbours.end(), [this, ch](QChar neighbour) {
        return addsUp(QString(neighbour) + ch + ch) && addsUp(QString(ch) + neighbour);
    });
}

bool CLogTextMeasure::addsUp(const QString &text)
{
    return trueWidthFine(text.utf16(), text.size()) == sum(text).fine;
}

bool CLogTextMeasure::pairsAddUp(const QString &lead, const QString &characters)
{
    // One text per character, with every other one on both its sides, so that no two errors cancel out.
    for (const QChar first : characters) {
        QString text = lead;
        for (const QChar second : characters) {
            text += first;
            text += second;
        }
        if (!addsUp(text))
            return false;
    }
    return true;
}

bool CLogTextMeasure::asciiAddsUp()
{
    const QString shared = printableAscii(false);
    const QString letters = scriptLetters();
    return pairsAddUp(QString(), shared) && pairsAddUp(QStringLiteral("中"), shared) &&
           pairsAddUp(QStringLiteral("a"), printableAscii(true)) &&
           std::all_of(letters.begin(), letters.end(), [&](QChar letter) { return addsUp(letter + shared); });
}

bool CLogTextMeasure::tabsAddUp()
{
    const QStringList trials{QStringLiteral("\t"), QStringLiteral("a\tb"), QStringLiteral("ab cd ef gh ij kl\t\tx"),
                             QStringLiteral("中文\t中\t1")};
    return std::all_of(trials.begin(), trials.end(), [this](const QString &trial) { return addsUp(trial); });
}

} // namespace KV
