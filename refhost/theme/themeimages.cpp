#include "theme/themeimages.h"

#include <QtCore/QFile>
#include <QtGui/QPainter>
#include <QtSvg/QSvgRenderer>

namespace refhost {

namespace {

constexpr int missingSize = 16;

QPixmap emptyPixmap(int width, int height, double scale, double pixelRatio)
{
    QPixmap pixmap(qMax(1, qRound(width * scale * pixelRatio)), qMax(1, qRound(height * scale * pixelRatio)));
    pixmap.fill(Qt::transparent);
    return pixmap;
}

bool paintDrawing(QPixmap &pixmap, const QString &fileName, const QColor &colour)
{
    QFile file(QStringLiteral(":/refhost/images/") + fileName);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    QSvgRenderer renderer(file.readAll().replace("currentColor", colour.name().toLatin1()));
    QPainter painter(&pixmap);
    painter.setOpacity(colour.alphaF());
    renderer.render(&painter, QRectF(pixmap.rect()));
    return renderer.isValid();
}

void paintBox(QPixmap &pixmap, const QColor &colour, const QColor &border, double radius)
{
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    painter.drawRoundedRect(QRectF(pixmap.rect()), radius, radius);
    if (!border.isValid())
        return;
    painter.setPen(border);
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(pixmap.rect()).adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
}

} // namespace

QPixmap paintThemeImage(const ThemeImage &image, const QColor &colour, const QColor &border, double scale,
                        double pixelRatio)
{
    QPixmap pixmap = emptyPixmap(image.width, image.height, scale, pixelRatio);
    if (image.svg.isEmpty())
        paintBox(pixmap, colour, border, image.radius * scale * pixelRatio);
    else if (!paintDrawing(pixmap, image.svg, colour))
        return QPixmap();
    pixmap.setDevicePixelRatio(pixelRatio);
    return pixmap;
}

QPixmap missingImage(double scale, double pixelRatio)
{
    QPixmap pixmap = emptyPixmap(missingSize, missingSize, scale, pixelRatio);
    pixmap.fill(Qt::black);
    const int half = pixmap.width() / 2;
    QPainter painter(&pixmap);
    painter.fillRect(0, 0, half, half, Qt::magenta);
    painter.fillRect(half, half, pixmap.width() - half, pixmap.height() - half, Qt::magenta);
    painter.end();
    pixmap.setDevicePixelRatio(pixelRatio);
    return pixmap;
}

} // namespace refhost
