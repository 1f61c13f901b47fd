#pragma once

#include <QtCore/QStringList>
#include <vector>

#include "log/clogtextmeasure.h"

namespace KV {

/// Cuts source lines into pieces for a width: characters are added one by one, from 10 on for the first piece and from
/// 11 on for the others, until the piece is too wide; it is then cut before the character that made it so. What reaches
/// the end of the line is not measured.
///
/// The cuts are those of measuring after every character, but only where sums of widths leave it open is anything
/// measured: nowhere in fonts of fixed pitch, about five times a piece in kerned ones. Same thread as the measure.
///
/// A piece with complex characters ends after 1536 of whatever kind, however narrow they are: hundreds of thousands of
/// accents on one letter would take minutes to measure, and to paint.
///
/// Control characters may be drawn from fonts that only other characters have had loaded, and so be wider or narrower
/// the second time. Lines that have some are cut as they are measured from then on, with all of their fonts loaded.
class UICONTROL_API CLogLineCutter
{
public:
    explicit CLogLineCutter(const QFont &font) : textMeasure(font) {}

    CLogTextMeasure &measure() { return textMeasure; }

    /// Appends the length of each piece of a line to `lengths`; `width` in pixels, any value. An empty line gives one
    /// empty piece, or none where the width is negative.
    void cut(const ushort *text, int length, int width, std::vector<int> &lengths);

private:
    struct Line
    {
        const ushort *text;
        int length;
        qint64 limit;         ///< 1/64 pixel; a piece as wide as this is too wide
        bool settled = false; ///< no part of it loads another font
    };

    int firstTooLong(Line &line, int start, int shortest);
    int searchShaped(Line &line, int start, int shortest, int count, qint64 width);
    int firstTooLongBetween(const Line &line, int start, int fits, int count);
    bool fitsWhole(Line &line);
    void settle(Line &line);

    CLogTextMeasure textMeasure;
};

} // namespace KV
