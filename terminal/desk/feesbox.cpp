#include "desk/feesbox.h"

#include <QtWidgets/QDoubleSpinBox>

namespace terminal {

FeesBox::FeesBox(const DeskSettings &settings, QWidget *parent)
    : SettingsBox(QStringLiteral("费率和保证金"), parent), before(settings)
{
    const FeeSettings &fees = before.fees;
    const auto addShare = [this](const QString &caption, const char *name, double value) {
        return addNumber(caption, name, value, 0, FeeSettings::largestShare, 2, QStringLiteral("‱"));
    };
    commission = addShare(QStringLiteral("股票佣金"), "commission", fees.commission);
    leastCommission = addNumber(QStringLiteral("每笔最低佣金"), "leastCommission", fees.leastCommission, 0,
                                FeeSettings::largestLeast, 2, QStringLiteral("元"));
    stampDuty = addShare(QStringLiteral("印花税（卖出）"), "stampDuty", fees.stampDuty);
    transferFee = addShare(QStringLiteral("过户费"), "transferFee", fees.transferFee);
    futuresFactor = addNumber(QStringLiteral("期货手续费"), "futuresFactor", fees.futuresFactor, 0,
                              FeeSettings::largestFactor, 2, QStringLiteral("倍标准"));
    extraMargin = addNumber(QStringLiteral("期货保证金加收"), "extraMargin", fees.extraMargin, 0,
                            FeeSettings::largestExtra, 1, QStringLiteral("%"));
    addButtons();
}

FeesBox::~FeesBox() = default;

DeskSettings FeesBox::settings() const
{
    DeskSettings chosen = before;
    chosen.fees.commission = commission->value();
    chosen.fees.leastCommission = leastCommission->value();
    chosen.fees.stampDuty = stampDuty->value();
    chosen.fees.transferFee = transferFee->value();
    chosen.fees.futuresFactor = futuresFactor->value();
    chosen.fees.extraMargin = extraMargin->value();
    return chosen;
}

} // namespace terminal
