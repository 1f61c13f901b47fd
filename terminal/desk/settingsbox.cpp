#include "desk/settingsbox.h"

#include <QtWidgets/QDoubleSpinBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSpinBox>
#include <algorithm>

#include "popups/popuplook.h"
#include "zb/cuiresource.h"

namespace terminal {

namespace {

void adoptField(QAbstractSpinBox &field, const char *name)
{
    field.setObjectName(QLatin1String(name));
    field.setGroupSeparatorShown(true);
    field.setMinimumWidth(ZB::scaled(160));
}

} // namespace

SettingsBox::SettingsBox(const QString &title, QWidget *parent)
    : QDialog(parent, Qt::Dialog | Qt::WindowTitleHint | Qt::WindowCloseButtonHint), form(new QFormLayout(this))
{
    const ZB::PopupLook look = ZB::PopupLook::fromResources();
    setWindowTitle(title);
    setFont(look.font);
    setStyleSheet(look.sheet());
    QPalette colors = palette();
    colors.setColor(QPalette::Window, look.background);
    setPalette(colors);
    form->setContentsMargins(ZB::scaled(20), ZB::scaled(16), ZB::scaled(20), ZB::scaled(14));
    form->setSpacing(ZB::scaled(10));
}

SettingsBox::~SettingsBox() = default;

QSpinBox *SettingsBox::addCount(const QString &caption, const char *name, qint64 value, int largest,
                                const QString &unit)
{
    auto *field = new QSpinBox(this);
    adoptField(*field, name);
    field->setRange(1, largest);
    field->setSuffix(QLatin1Char(' ') + unit);
    field->setValue(int(std::clamp<qint64>(value, 1, largest)));
    form->addRow(caption, field);
    return field;
}

QDoubleSpinBox *SettingsBox::addNumber(const QString &caption, const char *name, double value, double least,
                                       double largest, int decimals, const QString &unit)
{
    auto *field = new QDoubleSpinBox(this);
    adoptField(*field, name);
    field->setDecimals(decimals);
    field->setRange(least, largest);
    field->setSuffix(QLatin1Char(' ') + unit);
    field->setValue(value);
    form->addRow(caption, field);
    return field;
}

void SettingsBox::addButtons()
{
    auto *row = new QHBoxLayout;
    row->setSpacing(ZB::scaled(8));
    auto *accept = new QPushButton(QStringLiteral("确定"), this);
    auto *reject = new QPushButton(QStringLiteral("取消"), this);
    accept->setDefault(true);
    row->addStretch();
    row->addWidget(accept);
    row->addWidget(reject);
    form->addRow(row);
    connect(accept, &QPushButton::clicked, this, &QDialog::accept);
    connect(reject, &QPushButton::clicked, this, &QDialog::reject);
}

} // namespace terminal
