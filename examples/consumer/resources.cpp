// One theme, at one scale: a handful of colours by what their keys end in, and one font.

#include <QtCore/QMutex>
#include <QtGui/QColor>
#include <QtGui/QFont>
#include <QtGui/QPixmap>
#include <map>

#include "zb/cstylesheetcenter.h"
#include "zb/cuiresource.h"
#include "zb/cuiresourcechangehandler.h"

namespace ZB {

namespace {

QColor chosenColor(const QString &key)
{
    if (key.contains(QLatin1String("rise")))
        return QColor(0xC6, 0x28, 0x28);
    if (key.contains(QLatin1String("fall")))
        return QColor(0x2E, 0x7D, 0x32);
    if (key.contains(QLatin1String("selected")) && !key.contains(QLatin1String("text")))
        return QColor(0xCF, 0xE3, 0xFA);
    if (key.contains(QLatin1String("line")) || key.contains(QLatin1String("border")))
        return QColor(0xDD, 0xDD, 0xDD);
    if (key.contains(QLatin1String("back")) || key.contains(QLatin1String("header_nomal")))
        return Qt::white;
    return QColor(0x22, 0x22, 0x22);
}

QMutex mutex;
std::map<QString, QColor> colors; ///< each stays where it is, as rows keep the pointers

} // namespace

CUiResource::CUiResource() = default;
CUiResource::~CUiResource() = default;

CUiResource *CUiResource::instance()
{
    static CUiResource resources;
    return &resources;
}

const QColor *CUiResource::getColor(const QString &key)
{
    const QMutexLocker lock(&mutex);
    const auto [color, isNew] = colors.try_emplace(key);
    if (isNew)
        color->second = chosenColor(key);
    return &color->second;
}

const QFont *CUiResource::getFont(const QString &)
{
    static const QFont *font = [] {
        auto *made = new QFont(QStringLiteral("sans-serif"));
        made->setPixelSize(13);
        return made;
    }();
    return font;
}

int CUiResource::getSize(const QString &key)
{
    return key.contains(QLatin1String("margin")) ? 6 : 24;
}

const QPixmap *CUiResource::getPixmap(const QString &)
{
    static const QPixmap *image = [] {
        auto *made = new QPixmap(16, 16);
        made->fill(Qt::gray);
        return made;
    }();
    return image;
}

double CUiResource::scale() const
{
    return 1.0;
}

int scaled(int pixels)
{
    return pixels;
}

// The theme never changes, so nobody is ever told.
CUiResourceChangeHandler::CUiResourceChangeHandler() = default;
CUiResourceChangeHandler::~CUiResourceChangeHandler() = default;
void CUiResourceChangeHandler::themeChanged() {}
void CUiResourceChangeHandler::scaleChanged()
{
    themeChanged();
}

QString CStyleSheetCenter::getStyle(const QString &)
{
    return QString();
}

QString CStyleSheetCenter::getStyle(EControlType)
{
    return QString();
}

} // namespace ZB
