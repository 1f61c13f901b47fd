#include <QtGui/QFocusEvent>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QShortcut>
#include <algorithm>
#include <cmath>

#include "account/caccountscombobox.h"
#include "kv/cstockcodelineedit.h"
#include "order/cautobutton.h"
#include "order/copselectcodewidget.h"
#include "order/coptypebutton.h"
#include "order/crateselectwidget.h"
#include "window/pricefield.h"
#include "window/quantityfield.h"
#include "window/ticketform.h"
#include "window/ticketids.h"
#include "zb/clineedit.h"
#include "zb/cparametercell.h"
#include "zb/ewidgetevent.h"

namespace terminal {

namespace {

constexpr int eventContractChanged = 70;
constexpr int eventCodeFocus = 245;
constexpr int eventReferenceChanged = 1073;
constexpr int eventCodeChanged = 1083;
constexpr int eventDirectionChanged = 1084;
constexpr int eventLadderPriceType = 1127;
constexpr int eventLadderPrice = 1128;
constexpr int eventLadderVolume = 1129;
constexpr int eventAccountGroupChanged = 1167;
constexpr double largestVolume = 1e9;

bool isDirectionKey(const QKeyEvent &event)
{
    return event.modifiers() == Qt::NoModifier && (event.key() == Qt::Key_F1 || event.key() == Qt::Key_F2);
}

} // namespace

void TicketForm::connectFields()
{
    connect(priceField, &StepField::edited, this, [this] {
        sizeOrder();
        fieldEdited();
    });
    connect(quantityField, &StepField::edited, this, [this] {
        rates->setButtonCheckedByID(-1); // no longer the fraction that was chosen
        fieldEdited();
    });
    connect(priceField, &StepField::entered, quantityField, [this] { quantityField->setFocus(Qt::TabFocusReason); });
    connect(quantityField, &StepField::entered, sendButton, [this] { sendButton->setFocus(Qt::TabFocusReason); });
    connect(codeField->getStockCodeLineEdit()->getLineEdit(), &QLineEdit::textChanged, this, &TicketForm::noteCodeText);
}

void TicketForm::addShortcuts()
{
    const auto add = [this](const QKeySequence &keys, auto action) {
        auto *shortcut = new QShortcut(keys, this);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        connect(shortcut, &QShortcut::activated, this, action);
    };
    for (const int enter : {Qt::Key_Return, Qt::Key_Enter})
        add(Qt::CTRL | enter, [this] { sendButton->click(); });
    for (int rate = 1; rate <= 4; ++rate)
        add(Qt::ALT | (Qt::Key_0 + rate), [this, rate] { chooseRate(rate); });
    add(Qt::ALT | Qt::Key_U, [this] { unitButton->click(); });
    add(Qt::ALT | Qt::Key_0, [this] { rates->handleEvent(ZB::EventClicked, 0, 0, QString(), nullptr); });
}

bool TicketForm::isLadderEvent(int event)
{
    return event == eventLadderPriceType || event == eventLadderPrice || event == eventLadderVolume;
}

bool TicketForm::takeLadderEvent(int event, int second, const QString &text)
{
    if (!isLadderEvent(event))
        return false;
    bool isNumber = false;
    const double value = text.toDouble(&isNumber);
    const bool isUsable = isNumber && std::isfinite(value) && value > 0;
    if (event == eventLadderPriceType && second >= KV::PriceLimit && second <= KV::PriceBestFive)
        priceField->setPriceType(static_cast<KV::EPriceType>(second));
    else if (event == eventLadderPrice && isUsable)
        priceField->setPrice(value);
    else if (event == eventLadderVolume && isUsable) {
        // What one click can buy there is whole lots; a rest below one lot can only be sold.
        const int lot = draft().terms.lot;
        const auto volume = static_cast<qint64>(std::min(value, largestVolume));
        quantityField->setQuantity(volume < lot ? volume : volume / lot * lot);
        rates->setButtonCheckedByID(-1);
    } else
        return true;
    if (event != eventLadderVolume)
        sizeOrder();
    fieldEdited();
    return true;
}

bool TicketForm::handleEvent(int event, int first, int second, QString text, void *pointer)
{
    switch (event) {
    case ZB::EventClicked:
        if (first == TicketSend)
            send();
        else if (first == TicketUnit)
            switchUnit();
        else if (first == TicketOpenClose) {
            openButton->switchDirection();
            sizeOrder();
            fieldEdited();
        }
        return true;
    case ZB::EventRadioChosen:
        if (first == TicketTrade)
            setTrade(static_cast<kdservice::EVxTraderType>(second));
        else
            chooseRate(second);
        return true;
    case eventAccountChosen:
    case eventAccountGroupChanged:
        accountBox()->setWarning(false);
        [[fallthrough]];
    case eventReferenceChanged:
    case eventDirectionChanged:
        sizeOrder();
        fieldEdited();
        return true;
    case eventCodeChanged:
        takeCode();
        if (!text.isEmpty() && codeField->isAncestorOf(window()->focusWidget()))
            startEntry();
        Q_EMIT codeChosen(text);
        return true;
    case eventCodeFocus:
        if (second == 0)
            codeLeft();
        return true;
    case ZB::EventChecked:
        if (second == 1) // what has just been unlocked is to be filled in
            contractId()->setFocus(Qt::TabFocusReason);
        fieldEdited();
        return true;
    case ZB::EventItemChosen:
    case eventContractChanged:
        contractId()->getLineEdit()->setWarning(false);
        fieldEdited();
        return true;
    default:
        return ZB::CWidgetList::handleEvent(event, first, second, text, pointer);
    }
}

/// A focus proxy would cut the fields before the code out of the round of the Tab key.
void TicketForm::focusInEvent(QFocusEvent *event)
{
    ZB::CWidgetList::focusInEvent(event);
    codeField->getStockCodeLineEdit()->setFocus(event->reason());
}

/// The keys of the direction are the ticket's while it has the keyboard, whatever they mean to the window.
bool TicketForm::event(QEvent *event)
{
    if (event->type() == QEvent::ShortcutOverride && isDirectionKey(*static_cast<QKeyEvent *>(event))) {
        event->accept();
        return true;
    }
    return ZB::CWidgetList::event(event);
}

/// Enter goes on where a field does not use it itself.
void TicketForm::keyPressEvent(QKeyEvent *event)
{
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isDirectionKey(*event))
        setBuy(event->key() == Qt::Key_F1);
    else if (isEnter)
        focusNextPrevChild(true);
    else
        ZB::CWidgetList::keyPressEvent(event);
}

} // namespace terminal
