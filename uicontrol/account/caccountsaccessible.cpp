#include "account/caccountsaccessible.h"

#include "account/caccountscombobox.h"

namespace KV {

namespace {

QAccessibleInterface *makeInterface(const QString &, QObject *object)
{
    auto *box = qobject_cast<CAccountsComboBox *>(object);
    return box ? new CAccountsAccessible(box) : nullptr;
}

} // namespace

CAccountsAccessible::CAccountsAccessible(CAccountsComboBox *box) : QAccessibleWidget(box, QAccessible::ComboBox) {}

CAccountsAccessible::~CAccountsAccessible() = default;

void CAccountsAccessible::install()
{
    static const bool installed = (QAccessible::installFactory(makeInterface), true);
    Q_UNUSED(installed)
}

void CAccountsAccessible::valueChanged(CAccountsComboBox *box)
{
    if (!QAccessible::isActive())
        return;
    QAccessibleValueChangeEvent event(box, box->shownText());
    QAccessible::updateAccessibility(&event);
}

CAccountsComboBox &CAccountsAccessible::box() const
{
    return *static_cast<CAccountsComboBox *>(object());
}

QString CAccountsAccessible::text(QAccessible::Text kind) const
{
    if (kind == QAccessible::Value)
        return box().shownText();
    const QString given = QAccessibleWidget::text(kind);
    return given.isEmpty() && kind == QAccessible::Name ? QStringLiteral("账号") : given;
}

QAccessible::State CAccountsAccessible::state() const
{
    QAccessible::State state = QAccessibleWidget::state();
    state.hasPopup = true;
    state.expandable = true;
    state.expanded = box().isOpen();
    state.collapsed = !state.expanded;
    return state;
}

QStringList CAccountsAccessible::actionNames() const
{
    QStringList names = QAccessibleWidget::actionNames();
    if (box().isEnabled())
        names.prepend(showMenuAction());
    return names;
}

void CAccountsAccessible::doAction(const QString &name)
{
    if (name == showMenuAction() && box().isEnabled())
        box().showPopup();
    else
        QAccessibleWidget::doAction(name);
}

} // namespace KV
