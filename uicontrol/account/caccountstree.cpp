#include "account/caccountstree.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QPixmap>
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

/// Icons of the style grow no larger than they are drawn, which would set them beside those of the theme.
QIcon fitted(const QIcon &icon)
{
    const QSize size(ZB::scaled(iconSize), ZB::scaled(iconSize));
    if (icon.actualSize(size) == size)
        return icon;
    return QIcon(icon.pixmap(size).scaled(size, Qt::KeepAspectRatio, Qt::SmoothTransformation));
}

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
    groupIcon = fitted(style()->standardIcon(QStyle::SP_DirIcon));
    composedIcon = fitted(style()->standardIcon(QStyle::SP_DirLinkIcon));
    accountIcon = QIcon(*ZB::CUiResource::instance()->getPixmap(QStringLiteral("kv_img_setting_tree_icon_account")));
}

/// None for what is no choice.
QIcon CAccountsTree::iconOf(int kind) const
{
    switch (kind) {
    case SelectedAccountGroup:
        return groupIcon;
    case SelectedAccount:
        return accountIcon;
    case SelectedComposedAccount:
        return composedIcon;
    default:
        return {};
    }
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
        (*item)->setIcon(0, iconOf((*item)->type()));
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
        QTreeWidgetItem *top = newItem(SelectedAccountGroup, group.name, group.name);
        tree->addTopLevelItem(top);
        for (const AccountEntry &account : accounts)
            if (group.accountIds.contains(account.id))
                top->addChild(newItem(SelectedAccount, account.id, textOf(account)));
        top->setExpanded(true);
    }
    for (const AccountEntry &account : composed)
        tree->addTopLevelItem(newItem(SelectedComposedAccount, account.id, textOf(account)));
    for (const AccountEntry &account : accounts)
        tree->addTopLevelItem(newItem(SelectedAccount, account.id, textOf(account)));
    if (tree->topLevelItemCount() == 0)
        sayEmpty();
    markReported();
}

QTreeWidgetItem *CAccountsTree::newItem(ESelectedAccountType kind, const QString &id, const QString &text) const
{
    auto *item = new QTreeWidgetItem(kind);
    item->setText(0, text);
    item->setToolTip(0, text);
    item->setIcon(0, iconOf(kind));
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

} // namespace KV
