#pragma once

#include <QtCore/QMap>
#include <functional>
#include <vector>

#include "window/orderdraft.h"
#include "zb/cwidgetlist.h"

namespace KV {
class CAccountsComboBox;
class CAutoButton;
class CCompactSelectWidget;
class CCompactTypeSelectWidget;
class COpSelectCodeWidget;
class COpTypeButton;
class CRateSelectWidget;
} // namespace KV

namespace ZB {
class CParameterCell;
class CRadioButtonGroup;
class CSimpleTextWidget;
class CSmallNormalButton;
} // namespace ZB

namespace terminal {

class PriceField;
class QuantityField;

/// The fields of an order and the button that sends it. All of it works by keyboard: F1 buys and F2 sells, Enter goes
/// from field to field and sends at the end, Ctrl+Enter sends from anywhere, Alt+1 to Alt+4 size the order, Alt+0
/// changes the amount that it is sized by, Alt+U has the quantity of stocks counted in lots or in shares. GUI thread.
class TicketForm : public ZB::CWidgetList
{
    Q_OBJECT

public:
    explicit TicketForm(QWidget *parent = nullptr);
    ~TicketForm() override;

    /// Takes an order; an empty text when that worked, else why not. Writes it to the log until another is set, and
    /// again with null.
    using Sender = std::function<QString(const OrderDraft &)>;
    void setSender(Sender sender);
    /// What an order of this account for this code has to go by. Asked at every change and a few times a second;
    /// null for none.
    using FundsSource = std::function<TicketFunds(const OrderDraft &)>;
    void setFundsSource(FundsSource source);

    /// The order as the fields say it now.
    OrderDraft draft() const;
    void setTrade(kdservice::EVxTraderType trade);
    /// Has every order of a business refused for a reason, which is told as soon as the business is chosen.
    void refuseTrade(kdservice::EVxTraderType trade, const QString &reason);
    /// One account of the present business. False for one that it does not have.
    bool setAccount(const QString &id);
    /// Price and quantity of the code before are taken away, and the business becomes one that trades the code. The
    /// code that is there already changes nothing.
    void setCode(const QString &code);
    QString code() const;
    void setBuy(bool isBuy);
    /// Opening or closing, which counts where the business tells them apart.
    void setOpen(bool isOpen);
    void setPrice(double price);
    void setQuantity(qint64 quantity);
    /// What the instrument was last traded at: where stepping starts, and what an order without a price is sized by.
    void setLastPrice(double price);
    /// Gives the keyboard to the first field that is to be filled in for the code.
    void startEntry();
    /// Whether an event of a ladder is one for the ticket: 1127, 1128 and 1129.
    static bool isLadderEvent(int event);
    /// Takes over what was clicked in a ladder. False for events that are not for the ticket.
    bool takeLadderEvent(int event, int second, const QString &text);
    /// What the line under the button says.
    QString message() const;
    /// Shows what depends on the instrument and its limits of the day anew.
    void refresh();

    bool handleEvent(int event, int first, int second, QString text, void *pointer) override;
    void themeChanged() override;

Q_SIGNALS:
    /// The user has chosen another code, or taken it away.
    void codeChosen(const QString &code);

protected:
    bool event(QEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void buildFields();
    void buildRows();
    ZB::CWidgetList *addRow(const QString &caption, QWidget *field);
    void addShortcuts();
    void connectFields();
    void fixSizes();

    void send();
    /// What stands in the way of the order as the user sees it.
    OrderFault faultOf(const OrderDraft &order) const;
    void showFault(const OrderFault &fault);
    void say(const QString &text, bool isError);
    void chooseRate(int id);
    void sizeOrder();
    void fieldEdited();
    void switchUnit();
    /// Whether the code field shows another text than the code that is chosen.
    bool isTypingCode() const;
    void noteCodeText();
    void codeLeft();
    void takeCode();
    double sizingPrice() const;
    /// What a fraction of the funds comes to; absent while that cannot be told.
    qint64 sizedQuantity(const OrderDraft &order, int parts, bool ofTotal) const;
    /// The same of the chosen fraction.
    qint64 chosenQuantity() const;
    KV::CAccountsComboBox *accountBox() const;
    ZB::CParameterCell *contractId() const;

    ZB::CRadioButtonGroup *tradeGroup;
    std::vector<KV::CAccountsComboBox *> accountBoxes; ///< one per business, each with a choice of its own
    KV::COpSelectCodeWidget *codeField;
    PriceField *priceField;
    QuantityField *quantityField;
    KV::CRateSelectWidget *rates;
    KV::COpTypeButton *openButton;
    KV::CCompactTypeSelectWidget *sourceCell;
    KV::CCompactSelectWidget *contractCell;
    KV::CAutoButton *sendButton;
    ZB::CSimpleTextWidget *limitsText;
    ZB::CSimpleTextWidget *operationText;
    ZB::CSimpleTextWidget *amountText;
    ZB::CSimpleTextWidget *mostText;
    ZB::CSmallNormalButton *unitButton;
    ZB::CSimpleTextWidget *messageText;
    ZB::CWidgetList *openRow = nullptr;
    std::vector<ZB::CSimpleTextWidget *> captions;

    kdservice::EVxTraderType trade = kdservice::TraderStock;
    bool prefersLots = false;
    QString shownCode;          ///< what price and quantity are for
    bool wasTypingCode = false; ///< at the last change of the field's text
    QString typedCode;          ///< the last text that was no code yet
    QString droppedCode;        ///< one that was left before it was a code
    QString sizingFault;        ///< why a chosen fraction came to nothing, to be said
    QString sendFault;          ///< the click that is under way has cost a code that was being typed
    QMap<kdservice::EVxTraderType, QString> refusedTrades;
    Sender sender;
    FundsSource fundsSource;
};

} // namespace terminal
