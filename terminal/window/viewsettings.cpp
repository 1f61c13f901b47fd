#include "window/viewsettings.h"

#include <algorithm>
#include <cmath>

#include "kv/cuserconfig.h"
#include "theme/themeservice.h"
#include "window/options.h"

namespace terminal::viewsettings {

namespace {

using refhost::RiseFall;
using refhost::ThemeService;

constexpr int leastPercent = 100;
constexpr int mostPercent = 300;
const char *const themePath = "window/theme";
const char *const riseFallPath = "window/riseFall";
const char *const scalePath = "window/scale";

QVariant stored(const char *path)
{
    const KV::CUserConfig *config = KV::getUserConfig();
    return config ? config->value(QLatin1String(path)) : QVariant();
}

void store(const char *path, const QVariant &value)
{
    if (KV::CUserConfig *config = KV::getUserConfig())
        config->setValue(QLatin1String(path), value);
}

QString themeName(bool dark)
{
    return dark ? QStringLiteral("dark") : QStringLiteral("light");
}

void applyScale(int percent)
{
    ThemeService::instance().setScale(std::clamp(percent, leastPercent, mostPercent) / 100.0);
}

} // namespace

void load(const Options &options)
{
    ThemeService &service = ThemeService::instance();
    service.setTheme(options.dark ? themeName(*options.dark) : stored(themePath).toString());
    bool isNumber = false;
    const int riseFall = stored(riseFallPath).toInt(&isNumber);
    if (options.riseFall)
        service.setRiseFall(*options.riseFall);
    else if (isNumber && riseFall >= 0 && riseFall <= static_cast<int>(RiseFall::OrangeBlue))
        service.setRiseFall(static_cast<RiseFall>(riseFall));
    const int percent = stored(scalePath).toInt(&isNumber);
    if (options.scale || isNumber)
        applyScale(options.scale.value_or(percent));
}

bool isDark()
{
    return ThemeService::instance().theme() == themeName(true);
}

void setDark(bool dark)
{
    store(themePath, themeName(dark));
    ThemeService::instance().setTheme(themeName(dark));
}

void setRiseFall(RiseFall riseFall)
{
    store(riseFallPath, static_cast<int>(riseFall));
    ThemeService::instance().setRiseFall(riseFall);
}

int scalePercent()
{
    return static_cast<int>(std::lround(ThemeService::instance().scale() * 100));
}

void setScalePercent(int percent)
{
    applyScale(percent);
    store(scalePath, scalePercent());
}

} // namespace terminal::viewsettings
