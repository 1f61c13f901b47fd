#include "theme/themeservice.h"

#include <QtCore/QFile>
#include <QtCore/QPointer>
#include <QtCore/QtMath>
#include <QtGui/QPalette>
#include <QtWidgets/QApplication>

#include "theme/resourcechanges.h"
#include "theme/resourcestore.h"
#include "zb/cstylesheetcenter.h"

// Outside every namespace, as the macro wants it.
static void loadThemeFiles()
{
    Q_INIT_RESOURCE(refhost);
}

namespace refhost {

namespace {

constexpr double smallestScale = 1.0;
constexpr double largestScale = 3.0;

QByteArray readResource(const QString &name)
{
    QFile file(QStringLiteral(":/refhost/themes/") + name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

struct ThemeService::State
{
    QMap<QString, ThemeDefinition> themes;
    QString name = QStringLiteral("dark");
    RiseFall riseFall = RiseFall::RedUp;
    double scale = 1.0;
    QPointer<QApplication> application; ///< null unless its widgets follow
};

ThemeService &ThemeService::instance()
{
    static ThemeService *service = new ThemeService; // never destroyed, as the resources that it fills
    return *service;
}

ThemeService::ThemeService() : state(std::make_unique<State>())
{
    loadThemeFiles();
    QString error;
    ThemeDefinition common;
    bool good = common.overlay(readResource(QStringLiteral("common.json")), error);
    for (const char *file : {"dark.json", "light.json"}) {
        ThemeDefinition theme = common;
        good = good && theme.overlay(readResource(QLatin1String(file)), error);
        state->themes[theme.name] = theme;
    }
    Q_ASSERT_X(good, "ThemeService", qPrintable(error));
    // Nobody is told: who came before this is in the middle of asking for its first colour.
    ResourceStore::instance().apply(state->themes[state->name], state->riseFall, state->scale);
}

ThemeService::~ThemeService() = default;

QStringList ThemeService::themes() const
{
    return state->themes.keys();
}

QString ThemeService::title(const QString &name) const
{
    return state->themes.value(name).title;
}

QString ThemeService::theme() const
{
    return state->name;
}

bool ThemeService::setTheme(const QString &name)
{
    if (!state->themes.contains(name))
        return false;
    if (state->name == name)
        return true;
    state->name = name;
    apply(false);
    return true;
}

RiseFall ThemeService::riseFall() const
{
    return state->riseFall;
}

void ThemeService::setRiseFall(RiseFall riseFall)
{
    if (state->riseFall == riseFall)
        return;
    state->riseFall = riseFall;
    apply(false);
}

double ThemeService::scale() const
{
    return state->scale;
}

void ThemeService::setScale(double scale)
{
    if (qIsNaN(scale))
        return;
    const double bounded = qBound(smallestScale, scale, largestScale);
    if (qFuzzyCompare(bounded, state->scale))
        return;
    state->scale = bounded;
    apply(true);
}

QString ThemeService::loadFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QStringLiteral("%1: %2").arg(path, file.errorString());
    const QByteArray json = file.readAll();
    const QString base = ThemeDefinition::baseOf(json);
    ThemeDefinition theme = state->themes.value(base.isEmpty() ? QStringLiteral("dark") : base);
    if (theme.name.isEmpty())
        return QStringLiteral("%1: base: unknown theme \"%2\"").arg(path, base);
    theme.name.clear();
    QString error;
    if (!theme.overlay(json, error))
        return QStringLiteral("%1: %2").arg(path, error);
    if (theme.name.isEmpty())
        return QStringLiteral("%1: name: a text expected").arg(path);
    for (const RiseFall pair : {RiseFall::RedUp, RiseFall::GreenUp, RiseFall::OrangeBlue}) {
        const QString key = ThemePalette(theme, pair).firstWrongKey();
        if (!key.isEmpty())
            return QStringLiteral("%1: %2: no colour").arg(path, key);
    }
    state->themes[theme.name] = theme;
    if (theme.name == state->name)
        apply(false);
    return {};
}

QPalette ThemeService::palette() const
{
    const ThemePalette colours(state->themes[state->name], state->riseFall);
    const auto role = [&colours](const char *name) { return colours.colour(QLatin1String(name)); };
    QPalette palette;
    palette.setColor(QPalette::Window, role("background"));
    palette.setColor(QPalette::WindowText, role("text"));
    palette.setColor(QPalette::Base, role("background"));
    palette.setColor(QPalette::AlternateBase, role("oddRow"));
    palette.setColor(QPalette::Text, role("text"));
    palette.setColor(QPalette::PlaceholderText, role("second"));
    palette.setColor(QPalette::Button, role("raised"));
    palette.setColor(QPalette::ButtonText, role("text"));
    palette.setColor(QPalette::BrightText, role("onFill"));
    palette.setColor(QPalette::ToolTipBase, role("raised"));
    palette.setColor(QPalette::ToolTipText, role("text"));
    palette.setColor(QPalette::Highlight, role("selected"));
    palette.setColor(QPalette::HighlightedText, role("text"));
    palette.setColor(QPalette::Link, role("accent"));
    palette.setColor(QPalette::LinkVisited, role("accent"));
    for (const QPalette::ColorRole disabled : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, disabled, role("disabled"));
    return palette;
}

void ThemeService::styleApplication(QApplication &application)
{
    state->application = &application;
    QApplication::setStyle(QStringLiteral("Fusion"));
    styleNow();
}

void ThemeService::styleNow()
{
    if (state->application == nullptr)
        return;
    QApplication::setPalette(palette());
    QApplication::setFont(*ResourceStore::instance().font(QStringLiteral("fnt_default_normal")));
    state->application->setStyleSheet(ZB::CStyleSheetCenter::getStyle(QStringLiteral("QApplication")));
}

void ThemeService::apply(bool scaleChanged)
{
    ResourceStore::instance().apply(state->themes[state->name], state->riseFall, state->scale);
    styleNow();
    ResourceChanges::instance().notify(scaleChanged);
}

} // namespace refhost
