#include <QtGui/QWheelEvent>
#include <QtWidgets/QApplication>

#include "grid/gridmouse.h"
#include "grid/gridviewprivate.h"

namespace ZB {

/// Turns eighths of a degree into pixels and keeps what makes no whole pixel yet, so that slow wheels arrive too.
void GridMouse::wheel(QWheelEvent &event)
{
    if (event.modifiers() & Qt::ControlModifier) {
        event.ignore(); // the window's zoom
        return;
    }
    QPoint pixels = event.pixelDelta() * view.ratio;
    if (pixels.isNull()) {
        constexpr int notch = 120;
        const int perNotch = QApplication::wheelScrollLines() * view.geometry.rowHeight;
        const QPoint turned = event.angleDelta() * perNotch + wheelRest;
        pixels = QPoint(turned.x() / notch, turned.y() / notch);
        wheelRest = turned - pixels * notch;
    }
    if ((event.modifiers() & Qt::ShiftModifier) && pixels.x() == 0)
        pixels = pixels.transposed();
    view.scrollBy(-pixels.x(), -pixels.y());
    event.accept();
    view.announce();
}

} // namespace ZB
