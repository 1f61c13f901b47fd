#pragma once

#include <QtCore/QStringList>
#include <memory>

#include "refhostexport.h"
#include "theme/themepalette.h"

class QApplication;
class QPalette;

namespace refhost {

/// Chooses what ZB::CUiResource answers with: theme, colours of direction, scale. Starts with "dark", red for rising
/// and 100 %. Each change gives every resource its new value and then tells the ZB::CUiResourceChangeHandlers. GUI
/// thread.
class REFHOST_API ThemeService
{
public:
    static ThemeService &instance();

    /// Names that setTheme() takes: "dark", "light" and those of loaded files; and what users read for one.
    QStringList themes() const;
    QString title(const QString &name) const;

    QString theme() const;
    /// False for an unknown name; then nothing changes.
    bool setTheme(const QString &name);
    RiseFall riseFall() const;
    void setRiseFall(RiseFall riseFall);
    double scale() const;
    /// 1.0 for 100 %; values beyond 1.0 and 3.0 are cut off, what is no number is ignored.
    void setScale(double scale);

    /// Adds the theme of a JSON file, or replaces the one of its name; the file's "base" is what it is laid over
    /// ("dark" unless it says so). Returns an empty text, or what is wrong with the file, and then nothing changes.
    QString loadFile(const QString &path);

    /// The colours of stock Qt widgets.
    QPalette palette() const;
    /// Gives a program's stock Qt widgets the theme's style sheet, palette and font, now and after each change.
    void styleApplication(QApplication &application);

    ThemeService(const ThemeService &) = delete;
    ThemeService &operator=(const ThemeService &) = delete;

private:
    ThemeService();
    ~ThemeService();
    void apply(bool scaleChanged);
    void styleNow();

    struct State;
    std::unique_ptr<State> state;
};

} // namespace refhost
