#include "desk/limitsbox.h"

#include <QtWidgets/QDoubleSpinBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSpinBox>
#include <algorithm>

#include "popups/popuplook.h"
#include "zb/cuiresource.h"

namespace terminal {

namespace {

constexpr int largestQuantity = 100'000'000;
constexpr double largestAmount = 1e12;

} // namespace

LimitsBox::LimitsBox(const DeskSettings &settings, QWidget *parent)
    : QDialog(parent, Qt::Dialog | Qt::WindowTitleHint | Qt::WindowCloseButtonHint), before(settings),
      shares(new QSpinBox(this)), lots(new QSpinBox(this)), amount(new QDoubleSpinBox(this))
{
    const ZB::PopupLook look = ZB::PopupLook::fromResources();
    setWindowTitle(QStringLiteral("单笔上限"));
    setFont(look.font);
    setStyleSheet(look.sheet());
    QPalette colors = palette();
    colors.setColor(QPalette::Window, look.background);
    setPalette(colors);
    shares->setRange(1, largestQuantity);
    shares->setSuffix(QStringLiteral(" 股"));
    shares->setValue(int(std::min<qint64>(settings.mostShares, largestQuantity)));
    lots->setRange(1, largestQuantity);
    lots->setSuffix(QStringLiteral(" 手"));
    lots->setValue(int(std::min<qint64>(settings.mostLots, largestQuantity)));
    amount->setRange(1, largestAmount);
    amount->setDecimals(0);
    amount->setSuffix(QStringLiteral(" 元"));
    amount->setValue(settings.mostAmount);
    for (QAbstractSpinBox *field : {static_cast<QAbstractSpinBox *>(shares), static_cast<QAbstractSpinBox *>(lots),
                                    static_cast<QAbstractSpinBox *>(amount)}) {
        field->setGroupSeparatorShown(true);
        field->setMinimumWidth(ZB::scaled(160));
    }
    auto *form = new QFormLayout(this);
    form->setContentsMargins(ZB::scaled(20), ZB::scaled(16), ZB::scaled(20), ZB::scaled(14));
    form->setSpacing(ZB::scaled(10));
    form->addRow(QStringLiteral("股票、基金、债券"), shares);
    form->addRow(QStringLiteral("期货"), lots);
    form->addRow(QStringLiteral("金额"), amount);
    auto *accept = new QPushButton(QStringLiteral("确定"), this);
    accept->setDefault(true);
    form->addRow(accept);
    connect(accept, &QPushButton::clicked, this, &QDialog::accept);
}

DeskSettings LimitsBox::settings() const
{
    DeskSettings chosen = before;
    chosen.mostShares = shares->value();
    chosen.mostLots = lots->value();
    chosen.mostAmount = amount->value();
    return chosen;
}

} // namespace terminal
