#pragma once

#include <QtCore/QString>
#include <QtGui/QColor>
#include <QtGui/QFont>
#include <QtGui/QPixmap>
#include <atomic>
#include <memory>
#include <shared_mutex>
#include <unordered_map>

#include "theme/themepalette.h"

namespace refhost {

/// The objects behind the resource keys, one per key for the life of the process.
///
/// Threading: color(), font(), size() and scale() on any thread. Off the GUI thread the objects may be passed on but
/// not read: apply() changes them in place on the GUI thread. Only the table from key to object is locked. apply() and
/// pixmap() on the GUI thread.
class ResourceStore
{
public:
    static ResourceStore &instance();

    const QColor *color(const QString &key);
    const QFont *font(const QString &key);
    int size(const QString &key);
    const QPixmap *pixmap(const QString &key);
    double scale() const { return presentScale; }

    /// Gives every object the value that a theme has for it. Images asked for before are drawn again.
    void apply(const ThemeDefinition &theme, RiseFall riseFall, double scale);

    ResourceStore(const ResourceStore &) = delete;
    ResourceStore &operator=(const ResourceStore &) = delete;

private:
    ResourceStore() = default;
    ~ResourceStore() = default;

    struct HashText
    {
        std::size_t operator()(const QString &text) const { return qHash(text); }
    };
    template <typename Value>
    using Table = std::unordered_map<QString, std::unique_ptr<Value>, HashText>;

    template <typename Value>
    const Value *find(Table<Value> &table, const QString &key, const Value &missing);
    QPixmap paint(const QString &key) const;
    /// Prices line up only in a font whose figures are of equal width: says so when they are not, once per font.
    void checkNumberFonts();

    std::shared_mutex mutex; ///< guards the tables, not what their entries point at
    Table<QColor> colors;
    Table<QFont> fonts;
    Table<std::atomic<int>> sizes;
    Table<QPixmap> pixmaps; ///< GUI thread only

    ThemeDefinition presentTheme; ///< GUI thread only, as the next one
    RiseFall presentRiseFall = RiseFall::RedUp;
    QStringList checkedFonts;
    std::atomic<double> presentScale{1.0};
};

} // namespace refhost
