#pragma once

#include <QtCore/QMap>
#include <QtCore/QPair>

#include "kdservice/evxtradertype.h"
#include "kv/eselectedaccounttype.h"
#include "uicontrolexport.h"
#include "zb/ccombobox.h"

namespace KV {

class CAccountsTree;

/// A combo box over a tree of accounts and account groups in place of a list. The choice is a pair of kind and name; it
/// is made in the tree only, and the closed box shows it. What the tree reports (event 1137) goes on up the chain of
/// parents after the choice has been stored.
///
/// Delivers 1167 (its id, kind, name, null) when the user's groups have changed and the chosen one is among them: with
/// an empty name when it is gone. GUI thread; owned by its Qt parent.
class UICONTROL_API CAccountsComboBox : public ZB::CComboBox
{
    Q_OBJECT

public:
    CAccountsComboBox(int eventId, QWidget *parent);
    ~CAccountsComboBox() override;

    /// An empty name while nothing has been chosen and once the chosen group is gone; the kind is SelectedAccountGroup
    /// at first.
    QPair<ESelectedAccountType, QString> getSelection() const;
    /// False, and nothing is changed: a selection comes from the tree only.
    bool setSelection(ESelectedAccountType type, QString name);

    /// TraderFuture until another is set. A choice that was made stays, whether accounts of the new type hold it or
    /// not.
    kdservice::EVxTraderType getTraderType() const;
    void setTraderType(kdservice::EVxTraderType type);
    /// The tree shows composed accounts too from now on.
    void setComposeAcct();

    /// What showPopup() and hidePopup() do: the tree below the box.
    void showTree();
    void hideTree();
    void showPopup() override;
    void hidePopup() override;

    QSize minimumSizeHint() const override;
    bool handleEvent(int event, int first, int second, QString text, void *data) override;

protected:
    QString shownText() const override;
    bool isHint() const override;
    bool isOpen() const override;

    bool event(QEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;

private Q_SLOTS:
    void slotAccountGroupChanged(const QMap<QString, bool> &groups);

private:
    friend class CAccountsAccessible;

    CAccountsTree *tree;
    kdservice::EVxTraderType traderType;
    ESelectedAccountType selectionType;
    QString selectionName;
};

} // namespace KV
