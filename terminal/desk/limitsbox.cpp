#include "desk/limitsbox.h"

#include <QtWidgets/QDoubleSpinBox>
#include <QtWidgets/QSpinBox>

namespace terminal {

namespace {

constexpr int largestQuantity = 100'000'000;
constexpr double largestAmount = 1e12;

} // namespace

LimitsBox::LimitsBox(const DeskSettings &settings, QWidget *parent)
    : SettingsBox(QStringLiteral("单笔上限"), parent), before(settings)
{
    shares = addCount(QStringLiteral("股票、基金、债券"), "shares", before.mostShares, largestQuantity,
                      QStringLiteral("股"));
    lots = addCount(QStringLiteral("期货"), "lots", before.mostLots, largestQuantity, QStringLiteral("手"));
    amount = addNumber(QStringLiteral("金额"), "amount", before.mostAmount, 1, largestAmount, 0, QStringLiteral("元"));
    addButtons();
}

LimitsBox::~LimitsBox() = default;

DeskSettings LimitsBox::settings() const
{
    DeskSettings chosen = before;
    chosen.mostShares = shares->value();
    chosen.mostLots = lots->value();
    chosen.mostAmount = amount->value();
    return chosen;
}

} // namespace terminal
