#include <algorithm>
#include <utility>

#include "account/caccountscombobox.h"
#include "kv/caccountdata.h"
#include "kv/cstockcodelineedit.h"
#include "kv/eselectedaccounttype.h"
#include "order/ccompactselectwidget.h"
#include "order/ccompacttypeselectwidget.h"
#include "order/copselectcodewidget.h"
#include "order/coptypebutton.h"
#include "order/crateselectwidget.h"
#include "window/pricefield.h"
#include "window/quantityfield.h"
#include "window/ticketform.h"
#include "window/ticketids.h"
#include "zb/cparametercell.h"
#include "zb/cradiobuttongroup.h"

namespace terminal {

void TicketForm::setTrade(kdservice::EVxTraderType newTrade)
{
    trade = newTrade;
    tradeGroup->setCheckedById(trade);
    for (KV::CAccountsComboBox *box : accountBoxes) {
        box->setVisible(box == accountBox());
        box->setWarning(false);
    }
    codeField->setTradeType(trade);
    codeField->getStockCodeLineEdit()->setWarning(false); // another business may trade it
    // Money or holding sizes a credit order as it does a stock order; by itself the control has no words for credit.
    rates->setTradeType(trade == kdservice::TraderCredit ? kdservice::TraderStock : trade);
    const bool isCredit = trade == kdservice::TraderCredit;
    openRow->setVisible(trade != kdservice::TraderStock);
    sourceCell->setVisible(isCredit);
    contractCell->setVisible(isCredit);
    sizeOrder();
    fieldEdited();
    if (refusedTrades.contains(trade))
        say(refusedTrades[trade], true);
}

void TicketForm::refuseTrade(kdservice::EVxTraderType refused, const QString &reason)
{
    refusedTrades[refused] = reason;
}

bool TicketForm::setAccount(const QString &id)
{
    const KV::CAccountData *known = KV::getAccountData();
    const auto accounts = known ? known->accounts(trade) : QVector<KV::AccountEntry>();
    if (std::none_of(accounts.begin(), accounts.end(), [&](const KV::AccountEntry &each) { return each.id == id; }))
        return false;
    accountBox()->handleEvent(eventAccountChosen, TicketAccount, KV::SelectedAccount, id, nullptr);
    return true;
}

void TicketForm::fieldEdited()
{
    sendFault.clear();
    const QString fault = std::exchange(sizingFault, QString());
    say(fault, !fault.isEmpty());
    refresh();
}

void TicketForm::setBuy(bool isBuy)
{
    const OrderDraft order = draft();
    codeField->setDirection(order.trade == kdservice::TraderStock ? isBuy : isBuy == order.isOpen);
    sizeOrder();
    fieldEdited();
}

void TicketForm::setOpen(bool isOpen)
{
    if (openButton->isLong() == isOpen)
        return;
    openButton->switchDirection();
    sizeOrder();
    fieldEdited();
}

void TicketForm::setPrice(double price)
{
    priceField->setPrice(price);
    sizeOrder();
    fieldEdited();
}

void TicketForm::setQuantity(qint64 quantity)
{
    quantityField->setQuantity(quantity);
    rates->setButtonCheckedByID(-1);
    fieldEdited();
}

void TicketForm::setLastPrice(double price)
{
    priceField->setReferencePrice(price);
}

void TicketForm::startEntry()
{
    priceField->setFocus(Qt::OtherFocusReason);
}

} // namespace terminal
