#pragma once

#include <QtCore/QSet>
#include <QtCore/QStringList>
#include <QtGui/QImage>
#include <vector>

#include "frameworkexport.h"
#include "grid/gridcellpainter.h"
#include "grid/gridgeometry.h"

namespace ZB {

class GridSource;

/// What the headers show besides their texts.
struct GridHeaderState
{
    GridSortMarks sorts;
    int hovered = -1; ///< model column
    int pressed = -1;
    int current = -1; ///< has the keyboard while there are no rows
    bool funnelHovered = false;
    bool focused = false;
    bool enabled = true;
};

/// Draws the header line and the statistics row into pictures of their own, in device pixels. They change rarely, and
/// are then drawn whole.
class FRAMEWORK_API GridHeaderPainter
{
public:
    explicit GridHeaderPainter(GridCellPainter &painter);

    void paintHeader(QImage &picture, const GridGeometry &geometry, const GridHeaderState &state,
                     const GridSource *source);
    /// texts: by model column, of the columns on the screen at least. Returns the columns whose number does not fit.
    QSet<int> paintStatistics(QImage &picture, const GridGeometry &geometry, const QStringList &texts,
                              const QString &title);
    /// Only the cells of these columns, in a picture that is otherwise as it should be; the title must not be over
    /// them.
    QSet<int> repaintStatistics(QImage &picture, const GridGeometry &geometry,
                                const std::vector<GridShownColumn> &columns, const QStringList &texts);

    /// The width at which nothing of a header is cut off, with room for its marks.
    int wantedWidth(const QString &text, const GridGeometry &geometry, const GridHeaderState &state, int column) const;
    bool isCut(const QString &text, const GridGeometry &geometry, const GridHeaderState &state, int column) const;
    /// The width at which nothing of a text in the statistics row is cut off.
    int wantedStatisticWidth(QString text, const GridColumn &column) const;

private:
    struct Marks ///< where the marks of a header are; empty rectangles for none
    {
        QRect text;
        QRect arrow;
        QRect weight;
        QRect funnel;
    };

    Marks marksOf(const GridGeometry &geometry, const GridHeaderState &state, int column) const;
    QRect besideFunnel(const Marks &marks, const QRect &inside, int textWidth, Qt::Alignment alignment) const;
    void paintCell(GridCanvas &canvas, const GridGeometry &geometry, const GridHeaderState &state,
                   const GridShownColumn &where, const QString &text);
    /// False when the text did not fit.
    bool paintStatistic(GridCanvas &canvas, const QRect &room, QString text, const GridColumn &column);
    void paintShapes(QImage &picture, const GridGeometry &geometry, const GridHeaderState &state) const;
    QRgb statisticsBorderColor() const;
    QColor ground(const GridHeaderState &state, int column) const;
    static int sortPlace(const GridHeaderState &state, int column);

    GridCellPainter &cells;
};

} // namespace ZB
