#include <QtCore/QtMath>

#include "theme/resourcestore.h"
#include "theme/themeservice.h"
#include "zb/cuiresource.h"

namespace ZB {

CUiResource::CUiResource() = default;
CUiResource::~CUiResource() = default;

CUiResource *CUiResource::instance()
{
    static CUiResource resource;
    refhost::ThemeService::instance(); // the first theme is in place before anybody looks something up
    return &resource;
}

const QColor *CUiResource::getColor(const QString &key)
{
    return refhost::ResourceStore::instance().color(key);
}

const QFont *CUiResource::getFont(const QString &key)
{
    return refhost::ResourceStore::instance().font(key);
}

int CUiResource::getSize(const QString &key)
{
    return refhost::ResourceStore::instance().size(key);
}

const QPixmap *CUiResource::getPixmap(const QString &key)
{
    return refhost::ResourceStore::instance().pixmap(key);
}

double CUiResource::scale() const
{
    return refhost::ResourceStore::instance().scale();
}

int scaled(int pixels)
{
    const int length = qRound(pixels * refhost::ResourceStore::instance().scale());
    return pixels > 0 ? qMax(1, length) : length;
}

} // namespace ZB
