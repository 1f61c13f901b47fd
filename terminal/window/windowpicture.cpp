#include "window/windowpicture.h"

#include <QtGui/QPainter>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>
#include <algorithm>
#include <vector>

#include "zb/cuiresource.h"

namespace terminal {

namespace {

/// How many windows it stands on: the list of a box's field stands on the box.
int depthOf(const QWidget *window)
{
    int depth = window->windowType() == Qt::ToolTip ? 1 : 0;
    for (const QWidget *below = window->parentWidget(); below; below = below->window()->parentWidget())
        ++depth;
    return depth;
}

std::vector<QWidget *> windowsOver(const QWidget &window)
{
    std::vector<QWidget *> above;
    for (QWidget *each : QApplication::topLevelWidgets())
        if (each != &window && each->isVisible())
            above.push_back(each);
    std::stable_sort(above.begin(), above.end(),
                     [](const QWidget *a, const QWidget *b) { return depthOf(a) < depthOf(b); });
    return above;
}

} // namespace

QPixmap windowPicture(QWidget &window)
{
    const QPixmap plain = window.grab();
    const std::vector<QWidget *> above = windowsOver(window);
    if (above.empty())
        return plain;
    QRect whole(window.geometry());
    for (const QWidget *each : above)
        whole |= each->geometry();
    QPixmap picture(whole.size());
    picture.fill(window.palette().color(QPalette::Window));
    QPainter painter(&picture);
    painter.drawPixmap(window.geometry().topLeft() - whole.topLeft(), plain);
    painter.setPen(*ZB::CUiResource::instance()->getColor(QStringLiteral("clr_table_split_line")));
    for (QWidget *each : above) {
        const QRect place = each->geometry().translated(-whole.topLeft());
        painter.drawPixmap(place.topLeft(), each->grab());
        if (each->windowType() == Qt::Dialog) // the window system would frame it
            painter.drawRect(place.adjusted(-1, -1, 0, 0));
    }
    return picture;
}

} // namespace terminal
