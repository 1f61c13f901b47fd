#include "table/settingstore.h"

#include "kv/cuserconfig.h"
#include "table/filterlog.h"
#include "table/settingtext.h"

namespace ZB {

namespace {

constexpr int delayMilliseconds = 500;

} // namespace

SettingStore::SettingStore(int ownerId) : tableId(ownerId), path(QStringLiteral("table/%1/setting").arg(ownerId))
{
    delay.setSingleShot(true);
    delay.setInterval(delayMilliseconds);
    connect(&delay, &QTimer::timeout, this, [this] { save(source()); });
}

std::optional<CBaseTableSettingParam> SettingStore::load() const
{
    const KV::CUserConfig *config = KV::getUserConfig();
    return config ? settingFromText(config->value(path).toString()) : std::nullopt;
}

void SettingStore::saveSoon(std::function<CBaseTableSettingParam()> settings)
{
    source = std::move(settings);
    delay.start();
}

void SettingStore::flush(const std::function<CBaseTableSettingParam()> &settings)
{
    if (!delay.isActive())
        return;
    delay.stop();
    save(settings());
}

void SettingStore::save(const CBaseTableSettingParam &setting)
{
    KV::CUserConfig *config = KV::getUserConfig();
    if (!config)
        return;
    config->setValue(path, settingText(setting));
    tellUnkept(setting);
}

/// Once for a column, until its filter is one that is kept.
void SettingStore::tellUnkept(const CBaseTableSettingParam &setting)
{
    const QVector<CBaseTableColumnFilter> filters = setting.frame.filters.value_or(QVector<CBaseTableColumnFilter>());
    QSet<int> unkept;
    for (const CBaseTableColumnFilter &filter : filters)
        unkept.insert(filter.column);
    for (const CBaseTableColumnFilter &kept : keptFilters(filters))
        unkept.remove(kept.column);
    for (const CBaseTableColumnFilter &filter : filters)
        if (unkept.contains(filter.column) && !told.contains(filter.column))
            logFilter(tableId, columnName(setting, filter.column),
                      QStringLiteral("is not saved: the filters of a table may have %1 characters")
                          .arg(maximumFilterCharacters));
    told = unkept;
}

} // namespace ZB
