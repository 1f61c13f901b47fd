#pragma once

#include <QtGui/QColor>
#include <QtGui/QPixmap>
#include <optional>
#include <vector>

#include "log/clogglyphpictures.h"
#include "log/cloglayout.h"
#include "log/clogtextplaces.h"
#include "uicontrolexport.h"

namespace KV {

/// Colours and sizes of a log, looked up once per theme.
struct LogLook
{
    QColor background;
    QColor text;
    QColor selection; ///< behind the text of a selected piece
    QColor match;     ///< behind what a search has found
    QColor accent;    ///< of the bar in front of a selected piece
    int accentWidth = 2;
};

/// One row to draw; no piece for a row below the last one.
struct LogRow
{
    LogTextPtr piece;
    bool selected = false;
    std::vector<LogRange> marks;
};

/// Draws the rows of a log into a picture and remembers what it drew: rows that have only moved are moved in the
/// picture, rows that have not changed stay as they are. GUI thread. Part of CHpfLogWidget, of no use by itself.
class UICONTROL_API CLogRowPainter
{
public:
    CLogRowPainter();

    const CLogLayout &layout() const { return rowLayout; }
    void setLayout(const CLogLayout &layout);
    void setLook(const LogLook &look);
    /// The picture is another one, or its content is lost: everything is to be drawn again.
    void forget();

    /// Takes the rows to show from the top on, as many as the layout shows, and moves what is already in the picture.
    /// offset: pixels by which the text is scrolled to the left.
    void prepare(QPixmap &picture, std::vector<LogRow> rows, int offset);
    /// Draws the rows taken last, as far as the picture does not show them yet.
    void paint(QPainter &painter, CLogTextPlaces &places);

private:
    int rowsMoved(double rowPixels) const;
    void moveRows(QPixmap &picture, int by);
    bool isWhole(int row) const;
    void drawRow(QPainter &painter, const LogRow &row, const QRect &rect, CLogTextPlaces &places);
    void drawText(QPainter &painter, const LogRow &row, const QRect &rect, CLogTextPlaces &places);
    CLogGlyphPictures::Spans marksOf(const LogRow &row, const LogSlice &slice, int x, CLogTextPlaces &places) const;
    int baseline(CLogTextPlaces &places) const;

    CLogLayout rowLayout;
    LogLook look;
    std::vector<LogRow> wanted;
    std::vector<std::optional<LogRow>> drawn; ///< what the picture shows, where that is known
    int textOffset = 0;
    CLogGlyphPictures glyphs;
};

} // namespace KV
