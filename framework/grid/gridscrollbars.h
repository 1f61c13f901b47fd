#pragma once

#include <QtCore/QRect>
#include <QtCore/QSize>
#include <functional>

#include "frameworkexport.h"

class QWidget;

namespace ZB {

class CStandScrollBar;
struct GridGeometry;

/// The two scroll bars of a grid: where they are, and how their int values stand for 64-bit positions. GUI thread; the
/// bars are children of the widget given.
class GridScrollBars
{
public:
    /// moved: called with the new position of both when the user has moved one; device pixels.
    GridScrollBars(QWidget *parent, std::function<void(qint64 x, qint64 y)> moved);

    /// Shows the bars that the contents need and sets geometry.size to what they leave of `whole` (device pixels).
    void layOut(GridGeometry &geometry, const QSize &whole, double pixelRatio);
    /// Range, page and position as the geometry has them.
    void update(const GridGeometry &geometry);

private:
    struct Axis
    {
        CStandScrollBar *bar = nullptr;
        qint64 maximum = 0;
        int shift = 0; ///< a value of the bar stands for 2^shift pixels
        qint64 position() const;
        void set(qint64 maximum, qint64 page, qint64 step, qint64 position);
    };

    void report();

    Axis horizontal;
    Axis vertical;
    std::function<void(qint64, qint64)> moved;
    bool setting = false;
};

} // namespace ZB
