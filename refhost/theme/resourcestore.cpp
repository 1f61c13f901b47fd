#include "theme/resourcestore.h"

#include <log4cxx/logger.h>

#include <QtCore/QThread>
#include <QtGui/QFontInfo>
#include <QtGui/QFontMetricsF>
#include <QtGui/QGuiApplication>
#include <mutex>

#include "theme/themeimages.h"
#include "utils/clogcenter.h"

namespace refhost {

namespace {

constexpr int missingSize = 16;
const QString numberFamily = QStringLiteral("number");

void warn(const QString &text)
{
    LOG4CXX_WARN(utils::getStdLogger(), text.toStdString());
}

void warnOfMissing(const QString &key)
{
    warn(QStringLiteral("主题缺少资源 %1").arg(key));
}

QFont makeFont(const ThemeDefinition &theme, const ThemeFont &description, double scale)
{
    QFont font;
    const QStringList families = theme.families.value(description.family);
    font.setFamily(families.value(0)); // what QFont::family() tells style sheets
    font.setFamilies(families);
    font.setPixelSize(qMax(1, qRound(description.size * scale)));
    font.setBold(description.bold);
    return font;
}

bool hasEqualFigures(const QFont &font)
{
    const QFontMetricsF metrics(font);
    for (char figure = '1'; figure <= '9'; ++figure)
        if (!qFuzzyCompare(metrics.horizontalAdvance(QLatin1Char(figure)), metrics.horizontalAdvance(QLatin1Char('0'))))
            return false;
    return true;
}

double pixelRatio()
{
    return qGuiApp == nullptr ? 1.0 : qGuiApp->devicePixelRatio();
}

} // namespace

ResourceStore &ResourceStore::instance()
{
    static ResourceStore *store = new ResourceStore; // never destroyed: rows keep pointers to the end
    return *store;
}

template <typename Value>
const Value *ResourceStore::find(Table<Value> &table, const QString &key, const Value &missing)
{
    {
        const std::shared_lock<std::shared_mutex> lock(mutex);
        const auto found = table.find(key);
        if (found != table.end())
            return found->second.get();
    }
    const Value *made = nullptr;
    {
        const std::unique_lock<std::shared_mutex> lock(mutex);
        const auto [place, added] = table.try_emplace(key);
        if (!added)
            return place->second.get();
        place->second = std::make_unique<Value>(missing);
        made = place->second.get();
    }
    warnOfMissing(key);
    return made;
}

const QColor *ResourceStore::color(const QString &key)
{
    return find(colors, key, QColor(Qt::magenta));
}

const QFont *ResourceStore::font(const QString &key)
{
    return find(fonts, key, QFont());
}

int ResourceStore::size(const QString &key)
{
    {
        const std::shared_lock<std::shared_mutex> lock(mutex);
        const auto found = sizes.find(key);
        if (found != sizes.end())
            return *found->second;
    }
    {
        const std::unique_lock<std::shared_mutex> lock(mutex);
        const auto [place, added] = sizes.try_emplace(key);
        if (!added)
            return *place->second;
        place->second = std::make_unique<std::atomic<int>>(missingSize);
    }
    warnOfMissing(key);
    return missingSize;
}

const QPixmap *ResourceStore::pixmap(const QString &key)
{
    std::unique_ptr<QPixmap> &entry = pixmaps[key];
    if (entry == nullptr) {
        if (!presentTheme.images.contains(key))
            warnOfMissing(key);
        entry = std::make_unique<QPixmap>(paint(key));
    }
    return entry.get();
}

QPixmap ResourceStore::paint(const QString &key) const
{
    const auto image = presentTheme.images.find(key);
    if (image != presentTheme.images.end()) {
        const ThemePalette palette(presentTheme, presentRiseFall);
        const QPixmap painted = paintThemeImage(*image, palette.colour(image->colour), palette.colour(image->border),
                                                presentScale, pixelRatio());
        if (!painted.isNull())
            return painted;
    }
    return missingImage(presentScale, pixelRatio());
}

void ResourceStore::apply(const ThemeDefinition &theme, RiseFall riseFall, double scale)
{
    presentTheme = theme;
    presentRiseFall = riseFall;
    presentScale = scale;
    const ThemePalette palette(theme, riseFall);
    {
        const std::unique_lock<std::shared_mutex> lock(mutex);
        const auto put = [](auto &table, const QString &key, const auto &value) {
            auto &entry = table[key];
            if (entry == nullptr)
                entry = std::make_unique<typename std::decay_t<decltype(entry)>::element_type>(value);
            else
                *entry = value;
        };
        for (auto entry = theme.colours.begin(); entry != theme.colours.end(); ++entry)
            put(colors, entry.key(), palette.colour(*entry));
        for (auto entry = theme.fonts.begin(); entry != theme.fonts.end(); ++entry)
            put(fonts, entry.key(), makeFont(theme, *entry, scale));
        for (auto entry = theme.sizes.begin(); entry != theme.sizes.end(); ++entry)
            put(sizes, entry.key(), qRound(*entry * scale));
    }
    for (auto &[key, entry] : pixmaps)
        *entry = paint(key);
    checkNumberFonts();
}

void ResourceStore::checkNumberFonts()
{
    // Fonts are measured on the GUI thread only, and the first look-up of all may come from another one.
    if (qGuiApp == nullptr || QThread::currentThread() != qGuiApp->thread())
        return;
    for (auto entry = presentTheme.fonts.begin(); entry != presentTheme.fonts.end(); ++entry) {
        const QFont font = makeFont(presentTheme, *entry, presentScale);
        if (entry->family != numberFamily || checkedFonts.contains(font.family()))
            continue;
        checkedFonts << font.family();
        if (!hasEqualFigures(font))
            warn(QStringLiteral("数字字体 %1 (%2) 的数字宽度不一致，价格列将无法对齐")
                     .arg(entry.key(), QFontInfo(font).family()));
    }
}

} // namespace refhost
