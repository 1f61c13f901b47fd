#include "zb/cnstategridimage.h"

#include <QtGui/QFontMetricsF>
#include <QtGui/QPainter>
#include <QtGui/QPixmap>
#include <map>
#include <tuple>

#include "zb/cuiresource.h"

namespace ZB {

namespace {

constexpr int stateCount = 99;
/// More pictures than this come from colours that are no longer in use, fading ones for example.
constexpr std::size_t keptPictures = 128;

} // namespace

class CNStateGridImage::Private
{
public:
    using Key = std::tuple<int, QRgb, double, int>;

    QPixmap draw(int state, const QColor &color, double ratio) const;

    QFont font;
    QSize cell;
    std::map<Key, QPixmap> pictures;
};

/// A number too wide for its cell is drawn in a smaller font.
QPixmap CNStateGridImage::Private::draw(int state, const QColor &color, double ratio) const
{
    const QSize size(scaled(cell.width()), scaled(cell.height()));
    QPixmap picture((QSizeF(size) * ratio).toSize());
    picture.setDevicePixelRatio(ratio);
    picture.fill(Qt::transparent);
    const QString text = QString::number(state + 1);
    QFont fitting = font;
    fitting.setPixelSize(std::max(size.height() - 1, 1));
    while (fitting.pixelSize() > 1 && QFontMetricsF(fitting).horizontalAdvance(text) > size.width())
        fitting.setPixelSize(fitting.pixelSize() - 1);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::TextAntialiasing);
    painter.setFont(fitting);
    painter.setPen(color);
    // Figures have no descenders: their middle is that of their own height, not the line's.
    const QFontMetricsF metrics(fitting);
    const QRectF figures = metrics.tightBoundingRect(QStringLiteral("0"));
    painter.drawText(QPointF((size.width() - metrics.horizontalAdvance(text)) / 2,
                             (size.height() - figures.height()) / 2 - figures.top()),
                     text);
    return picture;
}

CNStateGridImage::CNStateGridImage(const QFont &font, const QSize &cell) : d(std::make_unique<Private>())
{
    d->font = font;
    d->cell = cell;
}

CNStateGridImage::~CNStateGridImage() = default;

void CNStateGridImage::setFont(const QFont &font)
{
    d->font = font;
    d->pictures.clear();
}

QSize CNStateGridImage::cellSize() const
{
    return {scaled(d->cell.width()), scaled(d->cell.height())};
}

void CNStateGridImage::drawCell(QPainter &painter, const QPoint &at, int state, const QColor &color)
{
    if (state < 0 || state >= stateCount)
        return;
    const double ratio = painter.device()->devicePixelRatioF();
    const Private::Key key(state, color.rgba(), ratio, cellSize().height());
    auto found = d->pictures.find(key);
    if (found == d->pictures.end()) {
        if (d->pictures.size() >= keptPictures)
            d->pictures.clear();
        found = d->pictures.emplace(key, d->draw(state, color, ratio)).first;
    }
    painter.drawPixmap(at, found->second);
}

} // namespace ZB
