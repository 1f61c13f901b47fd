#pragma once

#include <QtGui/QIcon>

#include "kdservice/evxtradertype.h"
#include "kv/caccountdata.h"
#include "kv/eselectedaccounttype.h"
#include "uicontrolexport.h"
#include "zb/cbasewidget.h"

class QKeyEvent;
class QTreeWidget;
class QTreeWidgetItem;

namespace KV {

/// The popup of the account combo box: a small frameless tool window with a tree of account groups and accounts, and of
/// composed accounts if asked for. Reports the current item by event 1137 (0, kind, identifier, null) at a click and
/// when it hides; kinds as in ESelectedAccountType.
///
/// Each item holds its identifier (a group's name, an account's id) in column 0 under Qt::UserRole, and its kind as the
/// item's type. GUI thread; hidden until shown; the content is made anew at every show.
class UICONTROL_API CAccountsTree : public ZB::CBaseWidget
{
    Q_OBJECT

public:
    CAccountsTree(kdservice::EVxTraderType type, QWidget *parent);
    ~CAccountsTree() override;

    void setTraderType(kdservice::EVxTraderType type);
    /// Whether composed accounts are in the tree too.
    void setCompose(bool compose);

    void setVisible(bool visible) override;
    void themeChanged() override;
    void scaleChanged() override;

protected:
    /// Adds what stands in the tree to an empty one.
    void createTree();
    void createTree_Compose();
    void changeItemText();

    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void changeEvent(QEvent *event) override;
    /// While it is open, for the whole program: whatever takes the box from its place, or leaves the box's window,
    /// closes it.
    bool eventFilter(QObject *watched, QEvent *event) override;
    /// Arrows move, Enter and the space bar hide and so report, Escape goes back to what was clicked last.
    void keyPressEvent(QKeyEvent *event) override;

private Q_SLOTS:
    void slotItemClicked(QTreeWidgetItem *item, int column);
    void slotItemDoubleClicked(QTreeWidgetItem *item, int column);

private:
    void createIcons();
    QIcon iconOf(int kind) const;
    void rebuild();
    void fill(const QVector<AccountEntry> &composed);
    QTreeWidgetItem *newItem(ESelectedAccountType kind, const QString &id, const QString &text) const;
    void sayEmpty();
    /// The item that was reported last looks selected when the tree opens again; it is not current, so that closing the
    /// popup without a choice reports nothing.
    void markReported();
    void applySizes();
    bool isAround(const QObject *object) const;
    /// Whether the keyboard has gone to a window that is neither the popup nor the box's.
    bool isLeft() const;
    QTreeWidgetItem *itemByKey(int key) const;

    kdservice::EVxTraderType traderType;
    bool compose = false;
    QTreeWidget *tree = nullptr;
    QIcon groupIcon;
    QIcon composedIcon;
    QIcon accountIcon;
    QTreeWidgetItem *clicked = nullptr; ///< of the present content
    int reportedKind = -1;
    QString reportedId;
};

} // namespace KV
