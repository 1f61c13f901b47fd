#include "account/caccountscombobox.h"

#include <QtGui/QCursor>
#include <QtGui/QFocusEvent>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QApplication>
#include <algorithm>

#include "account/caccountsaccessible.h"
#include "account/caccountstree.h"
#include "kv/caccountdata.h"
#include "kv/cuserconfig.h"

namespace KV {

namespace {

constexpr int eventAccountChosen = 1137;
constexpr int eventGroupChanged = 1167;
constexpr kdservice::EVxTraderType firstTraderType = kdservice::TraderFuture;

/// What users read for an account; its id where nobody knows it any more.
QString accountText(const QVector<AccountEntry> &accounts, const QString &id)
{
    const auto found =
        std::find_if(accounts.begin(), accounts.end(), [&id](const AccountEntry &account) { return account.id == id; });
    return found == accounts.end() || found->title.isEmpty() ? id : id + QLatin1Char(' ') + found->title;
}

} // namespace

CAccountsComboBox::CAccountsComboBox(int eventId, QWidget *parent)
    : ZB::CComboBox(eventId, parent), tree(nullptr), traderType(firstTraderType), selectionType(SelectedAccountGroup)
{
    CAccountsAccessible::install();
    tree = new CAccountsTree(traderType, this);
    addItem(QStringLiteral("请选择账号"), QString());
    if (CUserConfig *config = getUserConfig())
        connect(config, &CUserConfig::sigAccountGroupChanged, this, &CAccountsComboBox::slotAccountGroupChanged);
}

CAccountsComboBox::~CAccountsComboBox() = default;

QPair<ESelectedAccountType, QString> CAccountsComboBox::getSelection() const
{
    return {selectionType, selectionName};
}

bool CAccountsComboBox::setSelection(ESelectedAccountType, QString)
{
    return false;
}

kdservice::EVxTraderType CAccountsComboBox::getTraderType() const
{
    return traderType;
}

void CAccountsComboBox::setTraderType(kdservice::EVxTraderType type)
{
    traderType = type;
    tree->setTraderType(type);
}

void CAccountsComboBox::setComposeAcct()
{
    tree->setCompose(true);
}

void CAccountsComboBox::showTree()
{
    tree->move(mapToGlobal(QPoint(0, height())));
    tree->show();
    tree->raise();
}

void CAccountsComboBox::hideTree()
{
    tree->hide();
}

void CAccountsComboBox::showPopup()
{
    showTree();
}

void CAccountsComboBox::hidePopup()
{
    hideTree();
}

QSize CAccountsComboBox::minimumSizeHint() const
{
    return ZB::CComboBox::minimumSizeHint().expandedTo(size());
}

/// The choice is stored before anybody else hears of it.
bool CAccountsComboBox::handleEvent(int event, int first, int second, QString text, void *pointer)
{
    if (event == eventAccountChosen) {
        selectionType = static_cast<ESelectedAccountType>(second);
        selectionName = text;
        update();
        CAccountsAccessible::valueChanged(this);
    }
    return ZB::CComboBox::handleEvent(event, first, second, text, pointer);
}

QString CAccountsComboBox::shownText() const
{
    const CAccountData *accountData = getAccountData();
    if (selectionName.isEmpty())
        return itemText(0);
    if (accountData == nullptr || selectionType == SelectedAccountGroup)
        return selectionName;
    return accountText(selectionType == SelectedAccount ? accountData->accounts(traderType)
                                                        : accountData->composedAccounts(traderType),
                       selectionName);
}

bool CAccountsComboBox::isHint() const
{
    return selectionName.isEmpty();
}

bool CAccountsComboBox::isOpen() const
{
    return tree->isVisible();
}

void CAccountsComboBox::slotAccountGroupChanged(const QMap<QString, bool> &groups)
{
    if (selectionType != SelectedAccountGroup)
        return;
    const auto changed = groups.constFind(selectionName);
    if (changed == groups.constEnd())
        return;
    if (changed.value()) {
        selectionName.clear();
        setItemText(0, QStringLiteral("请选择账号(组)"));
        update();
        CAccountsAccessible::valueChanged(this);
    }
    deliverEvent(eventGroupChanged, eventId(), selectionType, selectionName, nullptr);
}

/// While the popup is open its keys are the popup's, not those of the window's shortcuts.
bool CAccountsComboBox::event(QEvent *event)
{
    if (event->type() == QEvent::ShortcutOverride && tree != nullptr && tree->isVisible()) {
        event->accept();
        return true;
    }
    return ZB::CComboBox::event(event);
}

void CAccountsComboBox::keyPressEvent(QKeyEvent *event)
{
    if (tree->isVisible())
        QApplication::sendEvent(tree, event);
    else
        ZB::CComboBox::keyPressEvent(event);
}

void CAccountsComboBox::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    if (tree->isVisible())
        hidePopup();
    else
        showPopup();
}

/// A click into the popup takes the focus away too, and so do window systems that activate whatever is shown; neither
/// must close it.
void CAccountsComboBox::focusOutEvent(QFocusEvent *event)
{
    ZB::CComboBox::focusOutEvent(event);
    if (QApplication::activeWindow() != tree && !tree->rect().contains(tree->mapFromGlobal(QCursor::pos())))
        hideTree();
}

} // namespace KV
