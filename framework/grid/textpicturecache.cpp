#include "grid/textpicturecache.h"

#include <QtGui/QFontMetrics>
#include <QtGui/QPainter>
#include <algorithm>

namespace ZB {

namespace {

QImage render(const QString &text, const QFont &font, QRgb color)
{
    const QFontMetrics metrics(font);
    const QSize size(std::max(1, metrics.horizontalAdvance(text)), std::max(1, metrics.ascent() + metrics.descent()));
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setFont(font);
    painter.setPen(QColor(color));
    painter.drawText(0, metrics.ascent(), text);
    return image;
}

} // namespace

TextPictureCache::TextPictureCache(qint64 maximumBytes) : limit(maximumBytes) {}

const QImage &TextPictureCache::picture(const QString &text, const QFont &deviceFont, int fontTag, QRgb color)
{
    const Key key{text, fontTag, color};
    const auto known = index.constFind(key);
    if (known != index.constEnd()) {
        entries.splice(entries.begin(), entries, *known);
        return entries.front().image;
    }
    entries.push_front({key, render(text, deviceFont, color)});
    index.insert(key, entries.begin());
    used += entries.front().image.sizeInBytes();
    while (used > limit && entries.size() > 1)
        dropOldest();
    return entries.front().image;
}

void TextPictureCache::dropOldest()
{
    used -= entries.back().image.sizeInBytes();
    index.remove(entries.back().key);
    entries.pop_back();
}

void TextPictureCache::clear()
{
    index.clear();
    entries.clear();
    used = 0;
}

} // namespace ZB
