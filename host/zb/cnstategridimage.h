#pragma once

#include <QtCore/QSize>
#include <memory>

#include "hostexport.h"

class QColor;
class QFont;
class QPainter;
class QPoint;

namespace ZB {

/// One image cut into cells of one size, one cell per state: the numbers from 1 on in a font, each in the middle of its
/// cell, cell 0 showing "1". They are drawn in any colour.
///
/// GUI thread. The pictures are made when they are first drawn, for the colour and the pixel ratio asked for, and kept.
class HOST_API CNStateGridImage
{
public:
    /// cell: pixels at 100 %; the cells follow the scale.
    CNStateGridImage(const QFont &font, const QSize &cell);
    ~CNStateGridImage();

    CNStateGridImage(const CNStateGridImage &) = delete;
    CNStateGridImage &operator=(const CNStateGridImage &) = delete;

    /// After a theme or scale change; drops the pictures.
    void setFont(const QFont &font);
    /// Size of a cell at the present scale.
    QSize cellSize() const;
    /// Draws cell `state`, from 0, with its top left corner at `at`. Nothing is drawn for a state below 0 or above 98.
    void drawCell(QPainter &painter, const QPoint &at, int state, const QColor &color);

private:
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace ZB
