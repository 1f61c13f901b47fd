#include "table/settingstore.h"

#include "kv/cuserconfig.h"
#include "table/settingtext.h"

namespace ZB {

namespace {

constexpr int delayMilliseconds = 500;

} // namespace

SettingStore::SettingStore(int tableId) : path(QStringLiteral("table/%1/setting").arg(tableId))
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

void SettingStore::save(const CBaseTableSettingParam &setting) const
{
    if (KV::CUserConfig *config = KV::getUserConfig())
        config->setValue(path, settingText(setting));
}

} // namespace ZB
