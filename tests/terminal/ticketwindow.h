#pragma once

#include <QtCore/QString>
#include <QtWidgets/QAbstractButton>

#include "eventwindow.h"
#include "printtext.h"
#include "window/orderdraft.h"

namespace KV {
class CAccountsComboBox;
}

namespace terminal {
class PriceField;
class QuantityField;
class TicketForm;
} // namespace terminal

/// A user with accounts of every business before an order ticket, in a window that is active. Known are 600519.SH,
/// a stock of 10.00 between 9.00 and 11.00 in lots of 100, 510050.SH, a fund with a tick of 0.001, rb2410, a future
/// with a tick of 1 and ten tonnes a lot, and 000300.SH, an index.
class TicketWindow : public EventWindow
{
public:
    TicketWindow();
    ~TicketWindow() override;

    /// A key to whoever has the keyboard.
    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void type(const QString &text);
    /// Types a code and takes it, when the codes are ready.
    void enterCode(const QString &code);
    /// As a click on the ladder tells them.
    void takePriceAndQuantity(const char *priceText, const char *quantityText);
    /// From here on orders come to `sent`, as the log tells them.
    void takeOrders();
    /// Clicks on the button once it can be clicked on.
    void sendNow();
    /// Opens the account box that is shown and takes the n-th entry.
    void pickAccount(int entry = 1);
    void click(QWidget *widget);
    QAbstractButton *button(const char *text) const;
    /// The name of the field that has the keyboard, for those that a user can read: an accessible name or a button's
    /// text.
    QString focus() const;
    QString sendText() const;

    QStringList sent;
    terminal::TicketForm *form = nullptr;
    terminal::PriceField *price = nullptr;
    terminal::QuantityField *quantity = nullptr;
    QAbstractButton *send = nullptr;
};
