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

const struct
{
    const char *path;
    double FeeSettings::*value;
    double largest;
} storedFees[] = {
    {"desk/fees/commission", &FeeSettings::commission, FeeSettings::largestShare},
    {"desk/fees/leastCommission", &FeeSettings::leastCommission, FeeSettings::largestLeast},
    {"desk/fees/stampDuty", &FeeSettings::stampDuty, FeeSettings::largestShare},
    {"desk/fees/transferFee", &FeeSettings::transferFee, FeeSettings::largestShare},
    {"desk/fees/futuresFactor", &FeeSettings::futuresFactor, FeeSettings::largestFactor},
    {"desk/fees/extraMargin", &FeeSettings::extraMargin, FeeSettings::largestExtra},
};

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
    for (const auto &fee : storedFees) {
        bool isNumber = false;
        const double stored = config->value(QLatin1String(fee.path)).toDouble(&isNumber);
        if (isNumber && stored >= 0 && stored <= fee.largest)
            settings.fees.*fee.value = stored;
    }
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
    for (const auto &fee : storedFees)
        config->setValue(QLatin1String(fee.path), fees.*fee.value);
}

} // namespace terminal
