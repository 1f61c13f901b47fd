#pragma once

#include <QtCore/QCache>
#include <QtCore/QPair>
#include <QtCore/QVector>
#include <boost/smart_ptr/weak_ptr.hpp>
#include <vector>

#include "log/clogsearch.h"
#include "log/clogtextmeasure.h"
#include "log/logtextdata.h"
#include "uicontrolexport.h"

namespace KV {

/// The part of a piece that a view shows, as one text to draw.
struct LogSlice
{
    int first = 0; ///< character of the piece
    QString text;
    int x = 0; ///< of its left edge, in pixels from the piece's
};

/// Where the characters of pieces are. A line of hundreds of thousands of characters is never shaped whole: only the
/// slice around the view is, placed by the sum of the characters before it. GUI thread. Part of CHpfLogWidget, of no
/// use by itself.
class UICONTROL_API CLogTextPlaces
{
public:
    explicit CLogTextPlaces(const QFont &font);

    CLogTextMeasure &measure() { return textMeasure; }
    const QFont &font() const { return ownFont; }

    int width(const LogTextPtr &piece);
    /// What is needed to show the pixels `left` to `right` of a piece.
    LogSlice slice(const LogTextPtr &piece, int left, int right);
    /// Left edges and widths, in pixels from the slice's left edge, of characters counted from the slice's first one.
    /// Text that runs from right to left may give several for one range.
    std::vector<QPair<int, int>> spans(const LogSlice &slice, const LogRange &range);

private:
    /// Characters at which a long piece may be taken up, and their places.
    struct Stations
    {
        boost::weak_ptr<LogTextData> piece; ///< told apart by it from a later piece at the same address
        QVector<int> characters;
        QVector<qint64> places; ///< 1/64 pixel; one more than characters, for the end
    };

    const Stations &stations(const LogTextPtr &piece);
    std::vector<QPair<int, int>> shapedSpans(const QString &text, const LogRange &range) const;

    const QFont ownFont;
    CLogTextMeasure textMeasure;
    QCache<const LogTextData *, Stations> longPieces;
};

} // namespace KV
