#pragma once

#include <QtWidgets/QAccessibleWidget>

namespace KV {

class CAccountsComboBox;

/// A combo box of accounts as screen readers and test tools see it: its value is the account or group that the closed
/// box shows, not the only item that it has as a list. GUI thread.
class CAccountsAccessible : public QAccessibleWidget
{
public:
    explicit CAccountsAccessible(CAccountsComboBox *box);
    ~CAccountsAccessible() override;

    /// Makes every such box accessible; costs nothing while nobody asks.
    static void install();
    /// Tells that the box may show something else.
    static void valueChanged(CAccountsComboBox *box);

    QString text(QAccessible::Text kind) const override;
    QAccessible::State state() const override;
    QStringList actionNames() const override;
    void doAction(const QString &name) override;

private:
    CAccountsComboBox &box() const;
};

} // namespace KV
