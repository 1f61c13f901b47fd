#include <QtGui/QColor>
#include <QtGui/QFont>
#include <QtGui/QPixmap>

#include "checks.h"
#include "zb/cstylesheetcenter.h"
#include "zb/cuiresource.h"

namespace conformance {

namespace {

const QString nothing = QStringLiteral("null, which no look-up may give");
const QString fallback = QStringLiteral("the same as for a key that no theme has: probably missing");

void checkColor(Report &report, ZB::CUiResource &resource, const QString &key)
{
    const QColor *color = resource.getColor(key);
    report.expect(color != nullptr, key, nothing);
    if (!color)
        return;
    report.expect(color == resource.getColor(key), key, QStringLiteral("another object at the second look-up"));
    const QColor *unknown = resource.getColor(QStringLiteral("clr_conformance_no_such_key"));
    report.expect(!unknown || *color != *unknown, key, fallback);
}

void checkFont(Report &report, ZB::CUiResource &resource, const QString &key)
{
    const QFont *font = resource.getFont(key);
    report.expect(font != nullptr, key, nothing);
    if (!font)
        return;
    report.expect(font->pixelSize() > 0 || font->pointSizeF() > 0, key, QStringLiteral("a font without a size"));
    report.expect(font == resource.getFont(key), key, QStringLiteral("another object at the second look-up"));
}

void checkImage(Report &report, ZB::CUiResource &resource, const QString &key)
{
    const QPixmap *image = resource.getPixmap(key);
    report.expect(image != nullptr, key, nothing);
    if (!image)
        return;
    report.expect(!image->isNull(), key, QStringLiteral("an empty image"));
    const QPixmap *unknown = resource.getPixmap(QStringLiteral("img_conformance_no_such_key"));
    report.expect(!unknown || image->toImage() != unknown->toImage(), key, fallback);
}

void checkKey(Report &report, ZB::CUiResource &resource, const QString &key)
{
    if (key.startsWith(QLatin1String("clr_")))
        checkColor(report, resource, key);
    else if (key.startsWith(QLatin1String("fnt_")))
        checkFont(report, resource, key);
    else if (key.startsWith(QLatin1String("siz_")))
        report.expect(resource.getSize(key) > 0, key, QStringLiteral("no size above 0"));
    else if (key.startsWith(QLatin1String("img_")))
        checkImage(report, resource, key);
    else
        report.expect(false, key, QStringLiteral("not a resource key"));
}

} // namespace

Findings checkResources(const std::vector<std::string> &extraKeys)
{
    Report report;
    ZB::CUiResource *resource = ZB::CUiResource::instance();
    report.expect(resource != nullptr, QStringLiteral("ZB::CUiResource::instance"), nothing);
    if (!resource)
        return report.take();
    for (const char *const *key = resourceKeys; *key; ++key)
        checkKey(report, *resource, QLatin1String(*key));
    for (const std::string &key : extraKeys)
        checkKey(report, *resource, QString::fromStdString(key));

    const double scale = resource->scale();
    report.expect(scale > 0, QStringLiteral("ZB::CUiResource::scale"), QString::number(scale));
    report.expect(ZB::scaled(100) == qRound(100 * scale), QStringLiteral("ZB::scaled"),
                  QStringLiteral("scaled(100) is %1 at scale %2").arg(ZB::scaled(100)).arg(scale));
    report.expect(ZB::scaled(0) == 0 && ZB::scaled(1) >= 1, QStringLiteral("ZB::scaled"),
                  QStringLiteral("0 must stay 0, and 1 must not vanish"));
    for (const char *kind : {"QMenu", "QLineEdit"})
        report.expect(!ZB::CStyleSheetCenter::getStyle(QLatin1String(kind)).isEmpty(), QLatin1String(kind),
                      QStringLiteral("no style sheet"));
    return report.take();
}

} // namespace conformance
