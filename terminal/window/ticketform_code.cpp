#include <utility>

#include "kv/cstockcodelineedit.h"
#include "order/cautobutton.h"
#include "order/ccompactselectwidget.h"
#include "order/copselectcodewidget.h"
#include "order/crateselectwidget.h"
#include "window/pricefield.h"
#include "window/quantityfield.h"
#include "window/ticketform.h"
#include "zb/clineedit.h"
#include "zb/cparametercell.h"

namespace terminal {

using feed::absent;

void TicketForm::setCode(const QString &newCode)
{
    if (newCode == code())
        return;
    codeField->setStockCode(newCode);
    const OrderDraft order = draft();
    const kdservice::EVxTraderType fitting = tradeOf(order.kind);
    const bool trades = fitting == trade || (fitting == kdservice::TraderStock && trade == kdservice::TraderCredit);
    if (order.isKnown && !trades && fitting != kdservice::TraderNone)
        setTrade(fitting);
    takeCode();
}

/// The code has been chosen, here or elsewhere. The same one again costs nothing of what was entered.
void TicketForm::takeCode()
{
    sendFault.clear();
    droppedCode.clear();
    wasTypingCode = false;
    if (code() == shownCode)
        return;
    shownCode = code();
    contractCell->setCheckStatus(false); // a contract is one of a code
    contractCell->setCompactId(QString());
    priceField->setReferencePrice(absent<double>);
    priceField->setPrice(absent<double>);
    quantityField->setQuantity(absent<qint64>);
    quantityField->setCountsLots(prefersLots);
    rates->setButtonCheckedByID(-1);
    fieldEdited();
}

bool TicketForm::isTypingCode() const
{
    const KV::CStockCodeLineEdit *field = codeField->getStockCodeLineEdit();
    return field->getLineEdit()->text() != field->getStockCode();
}

/// A code that is typed in full is chosen without another change of the text: so what is being typed is told by the
/// field when it matters, and kept here only to know what was dropped.
void TicketForm::noteCodeText()
{
    const ZB::CLineEdit *edit = codeField->getStockCodeLineEdit()->getLineEdit();
    const bool wasTyping = std::exchange(wasTypingCode, isTypingCode());
    if (wasTypingCode)
        typedCode = edit->text();
    else if (wasTyping && !edit->hasFocus())
        droppedCode = typedCode;
}

/// A code that was left half typed is gone. The click on the button that took the focus away means the code that the
/// user saw, which it would not send.
void TicketForm::codeLeft()
{
    const QString dropped = std::exchange(droppedCode, QString());
    if (dropped.isEmpty())
        return;
    const QString text = code().isEmpty() ? QStringLiteral("没有证券 %1").arg(dropped)
                                          : QStringLiteral("没有证券 %1，仍是 %2").arg(dropped, code());
    say(text, true);
    if (window()->focusWidget() == sendButton)
        sendFault = text;
}

} // namespace terminal
