#pragma once

#include <QtCore/QString>
#include <QtGui/QFont>
#include <QtGui/QFontMetrics>
#include <array>
#include <memory>

#include "uicontrolexport.h"

namespace KV {

/// How far a character's own width can be trusted inside a text.
enum class EWidthKind : unsigned char
{
    Exact,  ///< the same beside every other exact character: sums are true widths
    Shaped, ///< a spacing character whose neighbours may move it a little (kerning, ligatures)
    Complex ///< anything: combining, joining, right to left, surrogates, controls
};

struct LogCharWidth
{
    int advance = 0; ///< of the character alone, in 1/64 pixel
    EWidthKind kind = EWidthKind::Complex;
};

/// Widths of text in one font: true ones, which shape the text (7 to 12 us for 110 characters), and sums of kept
/// widths (under 0.2 us), which are true wherever the font has proved that its characters do not touch each other.
///
/// Lengths ending in "Fine" are in 1/64 pixel, the unit in which Qt adds up glyphs; a width in pixels is rounded from
/// it. To be used on the thread that made it: fonts keep per-thread state behind every copy. Part of CHpfLogWidget, of
/// no use by itself.
class UICONTROL_API CLogTextMeasure
{
public:
    /// Tries the font out on about 40,000 characters (3 to 5 ms).
    explicit CLogTextMeasure(const QFont &font);
    ~CLogTextMeasure();

    CLogTextMeasure(const CLogTextMeasure &) = delete;
    CLogTextMeasure &operator=(const CLogTextMeasure &) = delete;

    /// A font whose state belongs to nobody else. Plain copies of a QFont share what Qt changes while it measures,
    /// whichever threads they are on.
    static QFont ownCopy(const QFont &font);

    const QFontMetrics &metrics() const { return fontMetrics; }

    /// True width, in pixels. Wrong above 33 million pixels, where Qt's numbers end.
    int trueWidth(const QString &text) const;
    qint64 trueWidthFine(const ushort *text, int length);
    /// Characters that trueWidthFine() has shaped so far, each as often as it was: what its callers cost.
    qint64 shapedCharacters() const { return shaped; }

    struct Sum
    {
        qint64 fine = 0;
        EWidthKind kind = EWidthKind::Exact; ///< the worst of its characters
    };
    /// Sum of the characters' own widths; the true width when its kind is Exact.
    Sum sum(const ushort *text, int length);
    Sum sum(const QString &text) { return sum(text.utf16(), text.size()); }
    /// True width in pixels, without shaping where the sum will do.
    int width(const QString &text);
    /// The larger of `known` and a text's width, without shaping what is surely narrower. Beyond 4096 characters sums
    /// must do, since shaping would take milliseconds.
    int widest(const ushort *text, int length, int known);

    LogCharWidth charWidth(ushort unit)
    {
        const Page *page = pages[unit >> 8].get();
        const int packed = page ? (*page)[unit & 255] : unknown;
        return packed == unknown ? learn(unit) : unpack(packed);
    }
    /// Where text goes on after a tab at `fine`.
    static qint64 afterTab(qint64 fine);
    /// Width that all printable ASCII characters share in 1/64 pixel, being exact too; 0 when they do not.
    int asciiPitch() const { return pitch; }
    /// How many of the first `length` units are printable ASCII, one after the other.
    static int printableRun(const ushort *text, int length);
    /// Pixels of a length in 1/64 pixel, rounded as QFontMetrics does; the largest int for what does not fit.
    static int toPixels(qint64 fine);

private:
    using Page = std::array<int, 256>;
    static constexpr int unknown = -1;

    static LogCharWidth unpack(int packed) { return {packed >> 2, static_cast<EWidthKind>(packed & 3)}; }
    LogCharWidth learn(ushort unit);
    EWidthKind kindOf(ushort unit);
    bool addsUpEverywhere(QChar ch);
    bool addsUp(const QString &text);
    bool pairsAddUp(const QString &lead, const QString &characters);
    bool asciiAddsUp();
    bool tabsAddUp();

    QFont ownFont;
    QFontMetrics fontMetrics;
    QFontMetricsF fineMetrics;
    std::array<std::unique_ptr<Page>, 256> pages;
    bool asciiExact = false;
    bool hanExact = false;
    bool tabExact = false;
    int pitch = 0;
    qint64 shaped = 0;
};

} // namespace KV
