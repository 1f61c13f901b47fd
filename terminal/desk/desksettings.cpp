#include "desk/desksettings.h"

#include <QtCore/QString>
#include <cmath>

#include "kv/cuserconfig.h"

namespace terminal {

namespace {

const QString confirmsPath = QStringLiteral("desk/confirms");
const QString soundsPath = QStringLiteral("desk/sounds");
const QString sharesPath = QStringLiteral("desk/mostShares");
const QString lotsPath = QStringLiteral("desk/mostLots");
const QString amountPath = QStringLiteral("desk/mostAmount");

} // namespace

DeskSettings DeskSettings::load()
{
    DeskSettings settings;
    const KV::CUserConfig *config = KV::getUserConfig();
    if (!config)
        return settings;
    const auto flag = [config](const QString &path, bool &value) {
        if (const QVariant stored = config->value(path); stored.isValid())
            value = stored.toBool();
    };
    const auto count = [config](const QString &path, qint64 &value) {
        if (const qint64 stored = config->value(path).toLongLong(); stored > 0)
            value = stored;
    };
    flag(confirmsPath, settings.confirms);
    flag(soundsPath, settings.sounds);
    count(sharesPath, settings.mostShares);
    count(lotsPath, settings.mostLots);
    const double amount = config->value(amountPath).toDouble();
    if (std::isfinite(amount) && amount > 0)
        settings.mostAmount = amount;
    return settings;
}

void DeskSettings::save() const
{
    KV::CUserConfig *config = KV::getUserConfig();
    if (!config)
        return;
    config->setValue(confirmsPath, confirms);
    config->setValue(soundsPath, sounds);
    config->setValue(sharesPath, mostShares);
    config->setValue(lotsPath, mostLots);
    config->setValue(amountPath, mostAmount);
}

} // namespace terminal
