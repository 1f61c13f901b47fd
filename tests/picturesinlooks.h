#pragma once

#include <QtCore/QCoreApplication>
#include <QtCore/QList>
#include <QtGui/QImage>
#include <QtWidgets/QWidget>
#include <functional>

#include "theme/themeservice.h"

/// A widget in the dark and then in the light theme, each at 100 and at 150 %; `check` is called with the scale while
/// it looks so. Where SHOTS_DIR names a folder, the pictures go there for the eye, as "name-theme-percent.png".
inline QList<QImage> picturesInLooks(QWidget &widget, const char *name, const std::function<void(double)> &check)
{
    refhost::ThemeService &themes = refhost::ThemeService::instance();
    const QString folder = qEnvironmentVariable("SHOTS_DIR");
    QList<QImage> pictures;
    for (const char *theme : {"dark", "light"})
        for (const double scale : {1.0, 1.5}) {
            themes.setTheme(QLatin1String(theme));
            themes.setScale(scale);
            QCoreApplication::processEvents();
            check(scale);
            pictures << widget.grab().toImage();
            if (!folder.isEmpty())
                pictures.last().save(QStringLiteral("%1/%2-%3-%4.png")
                                         .arg(folder, QLatin1String(name), QLatin1String(theme))
                                         .arg(int(scale * 100)));
        }
    themes.setScale(1);
    themes.setTheme(QStringLiteral("dark"));
    return pictures;
}
