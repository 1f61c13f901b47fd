#pragma once

#include <QtCore/QString>

#include "hostexport.h"

class QColor;
class QFont;
class QPixmap;

namespace ZB {

/// Theme items by key: "clr_" colours, "fnt_" fonts, "siz_" sizes, "img_" images.
///
/// Threading: look-ups may come from any thread; the objects behind the pointers change on the GUI thread only, at a
/// theme or scale change, before CUiResourceChangeHandler hears of it. Ownership: one object per key for the life of
/// the process, owned by the service. A key that the theme lacks gives a visible fallback (and one warning in the log),
/// never null.
class HOST_API CUiResource
{
public:
    static CUiResource *instance();

    const QColor *getColor(const QString &key);
    const QFont *getFont(const QString &key);
    /// In device-independent pixels at the present scale.
    int getSize(const QString &key);
    /// The image at the present scale. GUI thread only.
    const QPixmap *getPixmap(const QString &key);
    /// The present scale, 1.0 for 100 %.
    double scale() const;

    CUiResource(const CUiResource &) = delete;
    CUiResource &operator=(const CUiResource &) = delete;

private:
    CUiResource();
    ~CUiResource();
};

/// A length given at 100 %, at the present scale, rounded; at least 1 when `pixels` is above 0.
HOST_API int scaled(int pixels);

} // namespace ZB
