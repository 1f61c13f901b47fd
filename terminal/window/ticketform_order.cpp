#include <QtCore/QPointer>

#include "account/caccountscombobox.h"
#include "kv/cstockcodelineedit.h"
#include "order/cautobutton.h"
#include "order/ccompactselectwidget.h"
#include "order/ccompacttypeselectwidget.h"
#include "order/copselectcodewidget.h"
#include "order/coptypebutton.h"
#include "order/crateselectwidget.h"
#include "records/fieldids.h"
#include "services/instruments.h"
#include "window/pricefield.h"
#include "window/quantityfield.h"
#include "window/ticketform.h"
#include "zb/ccombopushbutton.h"
#include "zb/clineedit.h"
#include "zb/cparametercell.h"
#include "zb/csimpletextwidget.h"
#include "zb/csmallnormalbutton.h"
#include "zb/numberformat.h"

namespace terminal {

namespace {

using feed::absent;

/// No lot and no tick of 0 may come out of a record.
TradeTerms termsOf(const kdservice::IData &instrument)
{
    TradeTerms terms;
    const double tick = instrument.getDouble(refhost::InstrumentPriceTick);
    if (tick != absent<double> && tick > 0)
        terms.tick = tick;
    const int decimals = instrument.getInt(refhost::InstrumentPriceDecimals);
    if (decimals >= 0 && decimals <= 6)
        terms.priceDecimals = decimals;
    const auto positive = [&instrument](int field, int otherwise) {
        const int value = instrument.getInt(field);
        return value > 0 && value != absent<int> ? value : otherwise;
    };
    terms.lot = positive(refhost::InstrumentLot, terms.lot);
    terms.multiplier = positive(refhost::InstrumentMultiplier, terms.multiplier);
    const auto limit = [&instrument](int field) {
        const double value = instrument.getDouble(field);
        return value > 0 ? value : absent<double>;
    };
    terms.upperLimit = limit(refhost::InstrumentUpperLimit);
    terms.lowerLimit = limit(refhost::InstrumentLowerLimit);
    return terms;
}

/// What the program knows of the order's code at this moment: limits may come after the code was chosen.
void takeInstrument(OrderDraft &order)
{
    const auto instrument = refhost::Instruments::find(order.code.toStdString());
    order.isKnown = instrument != nullptr;
    if (!order.isKnown)
        return;
    order.name = ZB::sToQs(instrument->getString(refhost::InstrumentName));
    order.terms = termsOf(*instrument);
    const int kind = instrument->getInt(refhost::InstrumentKind);
    if (kind > 0 && kind < KV::FilterAll)
        order.kind = static_cast<KV::EFilterFlag>(kind);
}

QString priceOrDash(double price, int decimals)
{
    return ZB::formatPriceDoubleNumber(price, decimals, utils::FormatNoGroups);
}

/// What the account could buy or sell at most.
QString mostOf(const OrderDraft &order, qint64 quantity)
{
    if (quantity == absent<qint64>)
        return {};
    const QString verb = order.trade == kdservice::TraderFuture
                             ? (order.isOpen ? QStringLiteral("可开") : QStringLiteral("可平"))
                             : (order.isBuy() ? QStringLiteral("可买") : QStringLiteral("可卖"));
    return verb + QLatin1Char(' ') + ZB::formatLonglongNumber(quantity, 0, utils::FormatGroupDigits);
}

const char *sideColor(const OrderDraft &order)
{
    return order.isBuy() ? "clr_global_rise" : "clr_global_fall";
}

} // namespace

OrderDraft TicketForm::draft() const
{
    OrderDraft order;
    order.trade = trade;
    const auto selection = accountBox()->getSelection();
    order.accountKind = selection.first;
    order.account = selection.second;
    order.code = code();
    takeInstrument(order);
    order.isLong = codeField->isLong();
    order.isOpen = trade == kdservice::TraderStock || openButton->isLong();
    order.priceType = priceField->priceType();
    order.price = priceField->price();
    order.quantity = quantityField->quantity();
    order.contractSource = sourceCell->getComboButton()->currentText();
    order.namesContract = trade == kdservice::TraderCredit && contractCell->getCheckStatus();
    order.contractId = contractCell->getCompactId();
    return order;
}

double TicketForm::sizingPrice() const
{
    const double price = priceField->price();
    return price == absent<double> ? priceField->referencePrice() : price;
}

qint64 TicketForm::sizedQuantity(const OrderDraft &order, int parts, bool ofTotal) const
{
    return fundsSource ? order.sized(fundsSource(order), sizingPrice(), parts, ofTotal) : absent<qint64>;
}

qint64 TicketForm::chosenQuantity() const
{
    return sizedQuantity(draft(), rates->getCheckedButtonID(), rates->getRateReference() == KV::RateOfTotal);
}

/// As long as a fraction is chosen, the quantity follows what it depends on: a price that is missing may still come,
/// but what was sized by the money of one account must not be sent for another.
void TicketForm::sizeOrder()
{
    if (rates->getCheckedButtonID() < 1)
        return;
    const qint64 quantity = chosenQuantity();
    quantityField->setQuantity(quantity);
    if (quantity != absent<qint64> || (!draft().isSale() && sizingPrice() == absent<double>))
        return;
    rates->setButtonCheckedByID(-1);
    sizingFault = QStringLiteral("没有资金数据，无法计算数量");
}

void TicketForm::chooseRate(int id)
{
    rates->setButtonCheckedByID(id);
    const OrderDraft order = draft();
    const qint64 quantity = chosenQuantity();
    if (quantity == 0)
        say(order.isSale() ? QStringLiteral("没有可卖出的数量") : QStringLiteral("可用资金不够一手"), true);
    else if (quantity != absent<qint64>)
        say(QString(), false);
    else if (!order.isSale() && sizingPrice() == absent<double>)
        say(QStringLiteral("输入价格后计算数量"), false); // the fraction stays chosen until then
    else {
        say(QStringLiteral("没有资金数据，无法计算数量"), true);
        rates->setButtonCheckedByID(-1);
    }
    sizeOrder();
    refresh();
}

void TicketForm::refresh()
{
    const OrderDraft order = draft();
    priceField->setTerms(order.terms);
    quantityField->setLot(order.terms.lot);
    sendButton->setButtonType(order.isBuy() ? ZB::NormalButtonRise : ZB::NormalButtonFall);
    QString what = order.operation();
    if (!order.name.isEmpty())
        what += QLatin1Char(' ') + order.name;
    if (order.quantity != absent<qint64>)
        what += QLatin1Char(' ') + QString::number(order.quantity) + QLatin1Char(' ') + order.unit();
    sendButton->setText(what);
    sendButton->setAccessibleName(what);
    operationText->setText(order.operation());
    operationText->setTextColorKey(QLatin1String(sideColor(order)));
    const bool isLots = quantityField->countsLots();
    unitButton->setText(isLots ? QStringLiteral("手") : order.unit());
    unitButton->setAccessibleName(isLots ? QStringLiteral("数量按手") : QStringLiteral("数量按") + order.unit());
    unitButton->setEnabled(order.terms.lot > 1);
    limitsText->setText(QStringLiteral("跌停 %1　涨停 %2")
                            .arg(priceOrDash(order.terms.lowerLimit, order.terms.priceDecimals),
                                 priceOrDash(order.terms.upperLimit, order.terms.priceDecimals)));
    mostText->setText(mostOf(order, sizedQuantity(order, 1, false)));
    amountText->setText(
        ZB::formatDoubleNumber(order.amount(), 2, utils::FormatGroupDigits, false, QStringLiteral("-")));
    amountText->setTextColorKey(order.amount() == absent<double> ? QStringLiteral("clr_text_second")
                                                                 : QStringLiteral("clr_text_default"));
}

/// Nobody may send an order for the code before while the field shows another, or showed one when the click began.
OrderFault TicketForm::faultOf(const OrderDraft &order) const
{
    if (isTypingCode())
        return {OrderField::Code, QStringLiteral("请先选定证券")};
    return sendFault.isEmpty() ? order.fault() : OrderFault{OrderField::Code, sendFault};
}

void TicketForm::send()
{
    if (refusedTrades.contains(trade))
        return say(refusedTrades[trade], true);
    const OrderDraft order = draft();
    const OrderFault fault = faultOf(order);
    sendFault.clear();
    if (fault.field != OrderField::None) {
        showFault(fault);
        return;
    }
    const QString sent = QStringLiteral("已发出：") + sendButton->text();
    const QPointer<TicketForm> self(this);
    const QString refusal = Sender(sender)(order); // a copy, which outlives whatever it does to the form
    if (self == nullptr)
        return;
    say(refusal.isEmpty() ? sent : refusal, !refusal.isEmpty());
    QWidget *next = refusal.isEmpty() ? static_cast<QWidget *>(codeField->getStockCodeLineEdit()) : priceField;
    next->setFocus(Qt::TabFocusReason);
}

void TicketForm::showFault(const OrderFault &fault)
{
    say(fault.text, true);
    switch (fault.field) {
    case OrderField::Account:
        accountBox()->setWarning(true);
        accountBox()->setFocus(Qt::TabFocusReason);
        break;
    case OrderField::Code:
        codeField->getStockCodeLineEdit()->setWarning(true);
        codeField->getStockCodeLineEdit()->setFocus(Qt::TabFocusReason);
        break;
    case OrderField::Price:
        priceField->setFaulty(true);
        priceField->setFocus(Qt::TabFocusReason);
        break;
    case OrderField::Quantity:
        quantityField->setFaulty(true);
        quantityField->setFocus(Qt::TabFocusReason);
        break;
    default:
        contractId()->getLineEdit()->setWarning(true);
        contractId()->setFocus(Qt::TabFocusReason);
        break;
    }
}

void TicketForm::say(const QString &text, bool isError)
{
    messageText->setText(text);
    messageText->setTextColorKey(isError ? QStringLiteral("clr_text_error") : QStringLiteral("clr_text_second"));
}

} // namespace terminal
