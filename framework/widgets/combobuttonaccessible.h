#pragma once

#include <QtWidgets/QAccessibleWidget>

namespace ZB {

class CComboPushButton;

/// A drop-down button as screen readers and test tools see it: a combo box, whose value is the chosen item whatever its
/// name is, and that a press opens. GUI thread.
class ComboButtonAccessible : public QAccessibleWidget
{
public:
    explicit ComboButtonAccessible(CComboPushButton *button);
    ~ComboButtonAccessible() override;

    /// Makes every drop-down button accessible; costs nothing while nobody asks.
    static void install();
    /// Tells that another item is chosen.
    static void valueChanged(CComboPushButton *button);

    QString text(QAccessible::Text kind) const override;
    QAccessible::State state() const override;
    QStringList actionNames() const override;
    void doAction(const QString &name) override;

private:
    CComboPushButton &button() const;
};

} // namespace ZB
