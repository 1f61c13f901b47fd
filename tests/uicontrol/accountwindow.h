#pragma once

#include <QtCore/QStringList>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTreeWidget>
#include <memory>

#include "account/caccountscombobox.h"
#include "account/caccountstree.h"
#include "printtext.h"
#include "services/accounts.h"
#include "services/userconfig.h"

/// A user with accounts of stocks and futures and with groups, who sits before an account combo box and a button in a
/// window that writes down what arrives.
class AccountWindow : public ZB::CBaseWidget
{
public:
    AccountWindow();
    ~AccountWindow() override;

    bool handleEvent(int event, int first, int second, QString text, void *data) override;

    /// What arrived since the last call: "event first second text, ..."
    QString taken();
    /// The tree as lines: two blanks per level, kind, identifier, text.
    QStringList lines() const;
    QTreeWidgetItem *item(const QString &id) const;
    void click(const QString &id, bool twice = false);
    /// A click as window systems make it: the window under the cursor becomes active first.
    void clickLikeAWindowSystem(const QString &id);
    void press(Qt::Key key);
    /// Opens the popup, waits until it is there, and gives the keyboard back to the box where the window system has
    /// given it to the popup.
    void open();
    bool isOpen() const { return popup->isVisible(); }

    refhost::Accounts *accounts = nullptr;
    KV::CAccountsComboBox *combo = nullptr;
    QPushButton *button = nullptr;
    KV::CAccountsTree *popup = nullptr;
    QTreeWidget *tree = nullptr;
    QStringList events;
};
