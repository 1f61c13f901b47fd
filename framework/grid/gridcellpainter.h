#pragma once

#include <QtCore/QHash>
#include <QtCore/QRect>
#include <QtGui/QImage>

#include "frameworkexport.h"
#include "grid/gridcell.h"
#include "grid/gridcolumn.h"
#include "grid/gridlook.h"
#include "grid/gridtext.h"

class QPixmap;

namespace ZB {

class GridCanvas;

/// Draws single cells: background, flash, icon, text, unit, lines, the frame of the current cell. Knows neither rows
/// nor source. Device pixels; the canvas' clip cuts what is partly out of sight.
class FRAMEWORK_API GridCellPainter
{
public:
    static constexpr int flashMilliseconds = 500;
    static constexpr int flashSteps = 16;

    GridCellPainter();

    void setLook(const GridLook &look, double pixelRatio);
    const GridLook &look() const { return colors; }
    GridText &text() { return texts; }
    const GridText &text() const { return texts; }
    int devicePixels(int pixels) const;

    /// The text that is lit up; empty for none.
    void setMarkedText(const QString &text) { marked = text; }
    const QString &markedText() const { return marked; }
    /// Keeps an icon and returns its key for GridCell; 0 for null.
    qint64 keepIcon(const QPixmap *icon);

    /// What a cell's content stands on, opaque.
    QRgb background(const GridCell &cell) const;
    /// Ground and lines. frozenEdge: the column is the last one that does not scroll.
    void paintBackground(GridCanvas &canvas, const QRect &rect, QRgb ground, bool frozenEdge);
    /// True when the text did not fit.
    bool paintContent(GridCanvas &canvas, const QRect &rect, const GridCell &cell, const GridColumn &column);
    void paintFrame(GridCanvas &canvas, const QRect &rect, const GridCell &cell);
    void paintNumber(GridCanvas &canvas, const QRect &rect, qint64 number, quint8 decor);
    /// Right of the last cell.
    void paintRest(GridCanvas &canvas, const QRect &rect, quint8 decor);

    /// A cell without its lines.
    QRect inside(const QRect &rect) const;
    bool isCut(const QRect &rect, const GridCell &cell, const GridColumn &column);
    /// The width, lines included, at which nothing of a cell is cut off.
    int wantedWidth(const GridCell &cell, const GridColumn &column) const;
    int numberWidth(int digits) const;
    /// The room at the right edge of a column's cells where units stand, with the gap in front of it; 0 for none.
    int unitSlot(const GridColumn &column) const;

    /// How strong a flash still is, from flashSteps at its start to 0.
    static quint8 flashStep(const GridCell &cell, qint64 now);

private:
    QRgb rowBackground(quint8 decor) const;
    QRgb textColor(const GridCell &cell) const;
    QRect textRect(const QRect &rect, const GridCell &cell, const GridColumn &column) const;
    int iconWidth(const GridCell &cell) const;
    void paintMarks(GridCanvas &canvas, const QRect &rect, const QString &text, const GridPlacedText &placed,
                    GridFont font);

    GridLook colors;
    double ratio = 1.0;
    GridText texts;
    QString marked;
    QHash<qint64, QImage> icons;
};

/// Whether cells of both columns are painted alike at the same width.
bool haveLikeCells(const GridColumn &a, const GridColumn &b);

/// The font of a column's cells.
GridFont cellFont(const GridColumn &column);

} // namespace ZB
