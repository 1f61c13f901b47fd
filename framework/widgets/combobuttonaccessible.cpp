#include "widgets/combobuttonaccessible.h"

#include "zb/ccombopushbutton.h"

namespace ZB {

namespace {

QAccessibleInterface *makeInterface(const QString &, QObject *object)
{
    auto *button = qobject_cast<CComboPushButton *>(object);
    return button ? new ComboButtonAccessible(button) : nullptr;
}

} // namespace

ComboButtonAccessible::ComboButtonAccessible(CComboPushButton *button)
    : QAccessibleWidget(button, QAccessible::ComboBox)
{
}

ComboButtonAccessible::~ComboButtonAccessible() = default;

void ComboButtonAccessible::install()
{
    static const bool installed = (QAccessible::installFactory(makeInterface), true);
    Q_UNUSED(installed)
}

void ComboButtonAccessible::valueChanged(CComboPushButton *button)
{
    if (!QAccessible::isActive())
        return;
    QAccessibleValueChangeEvent event(button, button->currentText());
    QAccessible::updateAccessibility(&event);
}

CComboPushButton &ComboButtonAccessible::button() const
{
    return *static_cast<CComboPushButton *>(object());
}

QString ComboButtonAccessible::text(QAccessible::Text kind) const
{
    return kind == QAccessible::Value ? button().currentText() : QAccessibleWidget::text(kind);
}

QAccessible::State ComboButtonAccessible::state() const
{
    QAccessible::State state = QAccessibleWidget::state();
    state.hasPopup = true;
    state.expandable = true;
    state.expanded = button().popup() != nullptr;
    state.collapsed = !state.expanded;
    return state;
}

QStringList ComboButtonAccessible::actionNames() const
{
    QStringList names = QAccessibleWidget::actionNames();
    if (button().isEnabled())
        names.prepend(showMenuAction());
    return names;
}

void ComboButtonAccessible::doAction(const QString &name)
{
    if (name == showMenuAction() && button().isEnabled())
        button().showPopup();
    else
        QAccessibleWidget::doAction(name);
}

} // namespace ZB
