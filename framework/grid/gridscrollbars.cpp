#include "grid/gridscrollbars.h"

#include <QtWidgets/QWidget>
#include <algorithm>
#include <limits>
#include <utility>

#include "grid/gridgeometry.h"
#include "zb/cstandscrollbar.h"

namespace ZB {

namespace {

/// A bar inside a table: its moves are nobody else's business.
class InnerBar : public CStandScrollBar
{
public:
    using CStandScrollBar::CStandScrollBar;
    bool handleEvent(int, int, int, QString, void *) override { return true; }
};

QRect logical(const QRect &rect, double ratio)
{
    return QRectF(rect.x() / ratio, rect.y() / ratio, rect.width() / ratio, rect.height() / ratio).toAlignedRect();
}

} // namespace

GridScrollBars::GridScrollBars(QWidget *parent, std::function<void(qint64, qint64)> onMoved) : moved(std::move(onMoved))
{
    horizontal.bar = new InnerBar(1, Qt::Horizontal, parent);
    vertical.bar = new InnerBar(0, Qt::Vertical, parent);
    for (CStandScrollBar *bar : {horizontal.bar, vertical.bar}) {
        bar->hide();
        bar->setCursor(Qt::ArrowCursor);
        QObject::connect(bar, &QAbstractSlider::valueChanged, parent, [this] { report(); });
    }
}

qint64 GridScrollBars::Axis::position() const
{
    return bar->value() == bar->maximum() ? maximum : static_cast<qint64>(bar->value()) << shift;
}

void GridScrollBars::Axis::set(qint64 newMaximum, qint64 page, qint64 step, qint64 position)
{
    maximum = newMaximum;
    shift = 0;
    while ((maximum + page) >> shift > std::numeric_limits<int>::max() / 2)
        ++shift;
    bar->setRange(0, static_cast<int>(maximum >> shift));
    bar->setPageStep(std::max(1, static_cast<int>(page >> shift)));
    bar->setSingleStep(std::max(1, static_cast<int>(step >> shift)));
    bar->setValue(static_cast<int>(position >> shift));
}

void GridScrollBars::report()
{
    if (!setting)
        moved(horizontal.position(), vertical.position());
}

void GridScrollBars::layOut(GridGeometry &geometry, const QSize &whole, double pixelRatio)
{
    const auto deviceExtent = [&](const Axis &axis) {
        const QSize hint = axis.bar->sizeHint();
        return qRound((axis.bar->orientation() == Qt::Vertical ? hint.width() : hint.height()) * pixelRatio);
    };
    const int width = deviceExtent(vertical);
    const int height = deviceExtent(horizontal);
    geometry.size = whole;
    bool lying = geometry.maximumScrollX() > 0;
    geometry.size.rheight() -= lying ? height : 0;
    const bool standing = geometry.maximumScrollY() > 0;
    geometry.size.rwidth() -= standing ? width : 0;
    if (!lying && geometry.maximumScrollX() > 0) {
        lying = true;
        geometry.size.rheight() -= height;
    }
    geometry.size = geometry.size.expandedTo(QSize(0, 0));
    vertical.bar->setGeometry(
        logical(QRect(geometry.size.width(), geometry.header().height(), width, geometry.body().height()), pixelRatio));
    horizontal.bar->setGeometry(logical(QRect(0, geometry.size.height(), geometry.size.width(), height), pixelRatio));
    vertical.bar->setVisible(standing);
    horizontal.bar->setVisible(lying);
}

void GridScrollBars::update(const GridGeometry &geometry)
{
    setting = true;
    vertical.set(geometry.maximumScrollY(), geometry.body().height(), geometry.rowHeight, geometry.scrollY);
    horizontal.set(geometry.maximumScrollX(), geometry.scrolledArea().width(), geometry.rowHeight, geometry.scrollX);
    setting = false;
}

} // namespace ZB
