#pragma once

#include <QtCore/QSet>
#include <QtCore/QTimer>
#include <functional>
#include <optional>

#include "zb/cbasetablesettingparam.h"

namespace ZB {

/// Keeps a table's settings in the user's configuration, a moment after the last change. GUI thread. Without a user
/// nothing is kept and nothing is read.
class SettingStore : public QObject
{
    Q_OBJECT

public:
    explicit SettingStore(int ownerId);

    /// Empty when there are none, or damaged ones.
    std::optional<CBaseTableSettingParam> load() const;
    /// Asks for the settings and writes them half a second after the last call.
    void saveSoon(std::function<CBaseTableSettingParam()> settings);
    /// Writes now what is to be written.
    void flush(const std::function<CBaseTableSettingParam()> &settings);

private:
    void save(const CBaseTableSettingParam &setting);
    void tellUnkept(const CBaseTableSettingParam &setting);

    const int tableId;
    const QString path;
    QTimer delay;
    std::function<CBaseTableSettingParam()> source;
    QSet<int> told; ///< columns whose filters are too large to be saved
};

} // namespace ZB
