#include "account/caccountstree.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QPointer>
#include <QtGui/QCursor>
#include <QtGui/QKeyEvent>
#include <QtGui/QPixmap>
#include <QtWidgets/QApplication>
#include <QtWidgets/QStyle>
#include <QtWidgets/QTreeWidget>
#include <QtWidgets/QTreeWidgetItemIterator>
#include <QtWidgets/QVBoxLayout>

#include "zb/clinewidgetlist.h"
#include "zb/cstylesheetcenter.h"
#include "zb/cuiresource.h"

namespace KV {

namespace {

constexpr int eventAccountChosen = 1137;
constexpr int popupWidth = 200;
constexpr int popupHeight = 180;
constexpr int frameMargin = 1;
constexpr int iconSize = 16;
constexpr int indentation = 16;

QString textOf(const AccountEntry &account)
{
    return account.title.isEmpty() ? account.id : account.id + QLatin1Char(' ') + account.title;
}

} // namespace

CAccountsTree::CAccountsTree(kdservice::EVxTraderType type, QWidget *parent)
    : ZB::CBaseWidget(parent, QStringLiteral("basket_accounts_tree")), traderType(type)
{
    createIcons();
    auto *box = new QVBoxLayout(this);
    box->setContentsMargins(0, 0, 0, 0);
    box->setSpacing(0);
    auto *frame = new ZB::CLineWidgetList(Qt::Horizontal, this);
    frame->setMargins(frameMargin, frameMargin, frameMargin, frameMargin);
    box->addWidget(frame);
    tree = new QTreeWidget(frame);
    tree->setEnabled(true);
    tree->setColumnCount(1);
    tree->setHeaderHidden(true);
    tree->setFocusPolicy(Qt::NoFocus);
    tree->setExpandsOnDoubleClick(false); // a double-click is a choice
    tree->setStyleSheet(ZB::CStyleSheetCenter::getStyle(ZB::ControlTree));
    frame->addStretchWidget(tree, 1, ZB::AnchorFill);
    connect(tree, &QTreeWidget::itemDoubleClicked, this, &CAccountsTree::slotItemDoubleClicked);
    connect(tree, &QTreeWidget::itemClicked, this, &CAccountsTree::slotItemClicked);
    setWindowFlags(Qt::Tool | Qt::FramelessWindowHint);
    setAttribute(Qt::WA_ShowWithoutActivating); // the keyboard stays with the combo box
    applySizes();
}

CAccountsTree::~CAccountsTree() = default;

void CAccountsTree::createIcons()
{
    groupIcon = QIcon(style()->standardPixmap(QStyle::SP_DirIcon));
    composedIcon = QIcon(style()->standardPixmap(QStyle::SP_DirLinkIcon));
    accountIcon = QIcon(*ZB::CUiResource::instance()->getPixmap(QStringLiteral("kv_img_setting_tree_icon_account")));
}

void CAccountsTree::applySizes()
{
    setFixedSize(ZB::scaled(popupWidth), ZB::scaled(popupHeight));
    tree->setIconSize(QSize(ZB::scaled(iconSize), ZB::scaled(iconSize)));
    tree->setIndentation(ZB::scaled(indentation));
    tree->setFont(*ZB::CUiResource::instance()->getFont(QStringLiteral("fnt_default_normal")));
}

void CAccountsTree::themeChanged()
{
    if (tree == nullptr)
        return;
    tree->setStyleSheet(ZB::CStyleSheetCenter::getStyle(ZB::ControlTree));
    createIcons();
    for (QTreeWidgetItemIterator item(tree); *item != nullptr; ++item)
        if ((*item)->type() == SelectedAccount)
            (*item)->setIcon(0, accountIcon);
    update();
}

void CAccountsTree::scaleChanged()
{
    applySizes();
    ZB::CBaseWidget::scaleChanged();
}

void CAccountsTree::setTraderType(kdservice::EVxTraderType type)
{
    traderType = type;
    rebuild();
}

void CAccountsTree::setCompose(bool on)
{
    compose = on;
    rebuild();
}

void CAccountsTree::rebuild()
{
    tree->clear();
    clicked = nullptr;
    if (compose)
        createTree_Compose();
    else
        createTree();
}

void CAccountsTree::createTree()
{
    fill({});
}

void CAccountsTree::createTree_Compose()
{
    const CAccountData *accountData = getAccountData();
    fill(accountData == nullptr ? QVector<AccountEntry>() : accountData->composedAccounts(traderType));
}

/// Groups with their accounts below them, composed accounts, then every account, whether a group has it or not.
void CAccountsTree::fill(const QVector<AccountEntry> &composed)
{
    const CAccountData *accountData = getAccountData();
    const QVector<AccountEntry> accounts =
        accountData == nullptr ? QVector<AccountEntry>() : accountData->accounts(traderType);
    const QVector<AccountGroup> groups =
        accountData == nullptr ? QVector<AccountGroup>() : accountData->groups(traderType);
    for (const AccountGroup &group : groups) {
        QTreeWidgetItem *top = newItem(SelectedAccountGroup, group.name, group.name, groupIcon);
        tree->addTopLevelItem(top);
        for (const AccountEntry &account : accounts)
            if (group.accountIds.contains(account.id))
                top->addChild(newItem(SelectedAccount, account.id, textOf(account), accountIcon));
        top->setExpanded(true);
    }
    for (const AccountEntry &account : composed)
        tree->addTopLevelItem(newItem(SelectedComposedAccount, account.id, textOf(account), composedIcon));
    for (const AccountEntry &account : accounts)
        tree->addTopLevelItem(newItem(SelectedAccount, account.id, textOf(account), accountIcon));
    if (tree->topLevelItemCount() == 0)
        sayEmpty();
    markReported();
}

QTreeWidgetItem *CAccountsTree::newItem(ESelectedAccountType kind, const QString &id, const QString &text,
                                        const QIcon &icon) const
{
    auto *item = new QTreeWidgetItem(kind);
    item->setText(0, text);
    item->setToolTip(0, text);
    item->setIcon(0, icon);
    item->setData(0, Qt::UserRole, id);
    return item;
}

void CAccountsTree::sayEmpty()
{
    auto *message = new QTreeWidgetItem(QTreeWidgetItem::UserType);
    message->setText(0, QStringLiteral("没有可选的账号"));
    message->setFlags(Qt::NoItemFlags);
    tree->addTopLevelItem(message);
}

void CAccountsTree::markReported()
{
    for (QTreeWidgetItemIterator item(tree); *item != nullptr; ++item) {
        if ((*item)->type() == reportedKind && (*item)->data(0, Qt::UserRole).toString() == reportedId) {
            (*item)->setSelected(true);
            return;
        }
    }
}

void CAccountsTree::changeItemText()
{
    const QTreeWidgetItem *item = tree->currentItem();
    if (item == nullptr)
        return;
    reportedKind = item->type();
    reportedId = item->data(0, Qt::UserRole).toString();
    deliverEvent(eventAccountChosen, 0, reportedKind, reportedId, nullptr);
}

void CAccountsTree::slotItemClicked(QTreeWidgetItem *item, int)
{
    clicked = item;
    changeItemText();
}

void CAccountsTree::slotItemDoubleClicked(QTreeWidgetItem *, int)
{
    hide();
}

void CAccountsTree::showEvent(QShowEvent *event)
{
    rebuild();
    ZB::CBaseWidget::showEvent(event);
    QCoreApplication::instance()->installEventFilter(this);
}

void CAccountsTree::hideEvent(QHideEvent *event)
{
    ZB::CBaseWidget::hideEvent(event);
    QCoreApplication::instance()->removeEventFilter(this);
    changeItemText();
}

/// The box looks pressed while its popup is open. A popup that was clicked into has the window system's activation: it
/// goes back to where the combo box is. (A tool window's isActiveWindow() is true also while its parent's window is
/// active.)
void CAccountsTree::setVisible(bool visible)
{
    const QPointer<QWidget> box(parentWidget());
    const bool wasActive = QApplication::activeWindow() == this;
    ZB::CBaseWidget::setVisible(visible);
    if (box == nullptr)
        return;
    box->update();
    if (!visible && wasActive)
        box->activateWindow();
}

/// Whether an object is the box, or a widget that moves it by moving.
bool CAccountsTree::isAround(const QObject *object) const
{
    const QWidget *box = parentWidget();
    const auto *widget = qobject_cast<const QWidget *>(object);
    return box != nullptr && widget != nullptr && (widget == box || widget->isAncestorOf(box));
}

bool CAccountsTree::isLeft() const
{
    const QWidget *active = QApplication::activeWindow();
    return active != this && parentWidget() != nullptr && active != parentWidget()->window();
}

bool CAccountsTree::eventFilter(QObject *watched, QEvent *event)
{
    const QWidget *box = parentWidget();
    const bool isMoved = event->type() == QEvent::Move && isAround(watched);
    const bool isResized =
        event->type() == QEvent::Resize && box != nullptr && (watched == box || watched == box->window());
    const bool isDeactivated = event->type() == QEvent::WindowDeactivate && isAround(watched) && isLeft();
    if (isMoved || isResized || isDeactivated)
        hide();
    return false;
}

/// Whoever clicked into the popup and goes on to another place leaves it. A press on the combo box closes it itself.
void CAccountsTree::changeEvent(QEvent *event)
{
    ZB::CBaseWidget::changeEvent(event);
    if (event->type() != QEvent::ActivationChange || QApplication::activeWindow() == this || !isVisible())
        return;
    const QPoint cursor = QCursor::pos();
    const QWidget *box = parentWidget();
    const bool isOnBox = box != nullptr && box->rect().contains(box->mapFromGlobal(cursor));
    if (isLeft() || (!isOnBox && !rect().contains(mapFromGlobal(cursor))))
        hide();
}

void CAccountsTree::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Escape:
        tree->setCurrentItem(clicked);
        hide();
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        hide();
        break;
    case Qt::Key_Left:
    case Qt::Key_Right:
        if (QTreeWidgetItem *item = tree->currentItem())
            item->setExpanded(event->key() == Qt::Key_Right);
        break;
    default:
        if (QTreeWidgetItem *item = itemByKey(event->key()))
            tree->setCurrentItem(item);
    }
}

/// Null where the key leads nowhere.
QTreeWidgetItem *CAccountsTree::itemByKey(int key) const
{
    QTreeWidgetItem *first = tree->topLevelItem(0);
    QTreeWidgetItem *last = first;
    while (last != nullptr && tree->itemBelow(last) != nullptr)
        last = tree->itemBelow(last);
    if (first == nullptr || !(first->flags() & Qt::ItemIsSelectable))
        return nullptr;
    QTreeWidgetItem *current = tree->currentItem();
    switch (key) {
    case Qt::Key_Down:
        return current == nullptr ? first : tree->itemBelow(current);
    case Qt::Key_Up:
        return current == nullptr ? last : tree->itemAbove(current);
    case Qt::Key_Home:
        return first;
    case Qt::Key_End:
        return last;
    default:
        return nullptr;
    }
}

} // namespace KV
