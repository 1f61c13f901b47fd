#include "window/ticketform.h"

#include <algorithm>
#include <iterator>

#include "account/caccountscombobox.h"
#include "kv/cstockcodelineedit.h"
#include "kv/cuserconfig.h"
#include "order/cautobutton.h"
#include "order/ccompactselectwidget.h"
#include "order/ccompacttypeselectwidget.h"
#include "order/copselectcodewidget.h"
#include "order/coptypebutton.h"
#include "order/crateselectwidget.h"
#include "utils/clogcenter.h"
#include "window/pricefield.h"
#include "window/quantityfield.h"
#include "window/ticketids.h"
#include "zb/ccombopushbutton.h"
#include "zb/clineedit.h"
#include "zb/cparametercell.h"
#include "zb/cradiobuttongroup.h"
#include "zb/csimpletextwidget.h"
#include "zb/csmallnormalbutton.h"
#include "zb/cuiresource.h"

namespace terminal {

namespace {

constexpr kdservice::EVxTraderType trades[] = {kdservice::TraderStock, kdservice::TraderCredit,
                                               kdservice::TraderFuture};
constexpr int resendMs = 500; ///< a second click within it is a slip
constexpr int captionWidth = 54;
constexpr int captionGap = 4; ///< behind the longest
constexpr int fieldHeight = 28;
constexpr int leastBoxWidth = 120;
constexpr int sendHeight = 34;
constexpr int lineHeight = 18;

QString lotsPath()
{
    return QStringLiteral("ticket/lots");
}

QString logOrder(const OrderDraft &draft)
{
    LOG4CXX_INFO(utils::getStdLogger(), draft.logText().toStdString());
    return {};
}

} // namespace

TicketForm::TicketForm(QWidget *parent) : ZB::CWidgetList(Qt::Vertical, parent), sender(logOrder)
{
    buildFields();
    buildRows();
    connectFields();
    addShortcuts();
    fixSizes();
    if (const KV::CUserConfig *config = KV::getUserConfig())
        prefersLots = config->value(lotsPath()).toBool();
    quantityField->setCountsLots(prefersLots);
    setTrade(kdservice::TraderStock);
}

TicketForm::~TicketForm() = default;

/// In the order in which Tab goes through them.
void TicketForm::buildFields()
{
    tradeGroup = new ZB::CRadioButtonGroup(this, TicketTrade, 0, false, Qt::Horizontal);
    for (const kdservice::EVxTraderType each : trades)
        tradeGroup->addButton(tradeText(each), each);
    for (const kdservice::EVxTraderType each : trades) {
        auto *box = new KV::CAccountsComboBox(TicketAccount, this);
        box->setAccessibleName(tradeText(each) + QStringLiteral("账号"));
        box->setTraderType(each);
        box->setComposeAcct();
        accountBoxes.push_back(box);
    }
    codeField = new KV::COpSelectCodeWidget(KV::OpParamFirstLegLong, this);
    codeField->setEmptyHintText(QStringLiteral("代码、名称或拼音"));
    codeField->getStockCodeLineEdit()->getLineEdit()->setAccessibleName(QStringLiteral("证券代码"));
    codeField->setOperationType(kdservice::OperationBuy);
    openButton = new KV::COpTypeButton(TicketOpenClose, KV::OpParamFirstLegOpen, this);
    sourceCell = new KV::CCompactTypeSelectWidget(this);
    sourceCell->getComboButton()->setEventId(TicketSource);
    sourceCell->setSpacing(captionGap);
    for (const char *source : {"普通头寸", "专项头寸"})
        sourceCell->getComboButton()->addItem(QString::fromUtf8(source));
    contractCell = new KV::CCompactSelectWidget(this);
    priceField = new PriceField(this);
    quantityField = new QuantityField(this);
    unitButton = new ZB::CSmallNormalButton(TicketUnit, true, ZB::NormalButtonRaised, this);
    unitButton->setFocusPolicy(Qt::NoFocus);
    unitButton->setToolTip(QStringLiteral("数量按手或按股填写（Alt+U）"));
    rates = new KV::CRateSelectWidget(this);
    sendButton = new KV::CAutoButton(TicketSend, false, ZB::NormalButtonRise, this, resendMs);
    sendButton->setTextFontKey(QStringLiteral("fnt_default_bold"));
    sendButton->setToolTip(QStringLiteral("Enter，或在任何位置按 Ctrl+Enter"));
    for (ZB::CSimpleTextWidget **line : {&limitsText, &operationText, &amountText, &mostText, &messageText})
        *line = new ZB::CSimpleTextWidget(QString(), this);
}

void TicketForm::buildRows()
{
    setMargins(10, 8, 10, 8);
    setSpacing(6);
    addRow(QStringLiteral("业务"), tradeGroup);
    ZB::CWidgetList *accountRow = addRow(QStringLiteral("账号"), accountBoxes.front());
    for (size_t other = 1; other < accountBoxes.size(); ++other)
        accountRow->addStretchWidget(accountBoxes[other], 1, ZB::AnchorFill);
    addRow(QStringLiteral("代码"), codeField);
    openRow = addRow(QStringLiteral("开平"), openButton);
    openRow->addFixedSpace(8);
    openRow->addStretchWidget(operationText, 1, ZB::AnchorFill);
    addFixedWidget(sourceCell, ZB::AnchorFill);
    addFixedWidget(contractCell, ZB::AnchorFill);
    addRow(QStringLiteral("价格"), priceField);
    addRow(QString(), limitsText);
    ZB::CWidgetList *quantityRow = addRow(QStringLiteral("数量"), quantityField);
    quantityRow->addFixedSpace(4);
    quantityRow->addFixedWidget(unitButton, ZB::AnchorCentre);
    addRow(QString(), rates);
    mostText->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    addRow(QStringLiteral("金额"), amountText)->addStretchWidget(mostText, 1, ZB::AnchorFill);
    addFixedSpace(4);
    addFixedWidget(sendButton, ZB::AnchorFill);
    addFixedWidget(messageText, ZB::AnchorFill);
    addStretchSpace(1);
}

ZB::CWidgetList *TicketForm::addRow(const QString &caption, QWidget *field)
{
    auto *row = new ZB::CWidgetList(Qt::Horizontal, this);
    row->setMargins(2, 0, 0, 0);
    captions.push_back(new ZB::CSimpleTextWidget(caption, row));
    row->addFixedWidget(captions.back(), ZB::AnchorCentre);
    if (field == openButton)
        row->addFixedWidget(field, ZB::AnchorCentre);
    else
        row->addStretchWidget(field, 1, ZB::AnchorFill);
    addFixedWidget(row, ZB::AnchorFill);
    return row;
}

void TicketForm::fixSizes()
{
    for (ZB::CSimpleTextWidget *caption : captions)
        caption->setFixedSize(ZB::scaled(captionWidth - 2), ZB::scaled(lineHeight));
    for (QWidget *box : accountBoxes) {
        box->setFixedHeight(ZB::scaled(fieldHeight));
        box->setMinimumWidth(ZB::scaled(leastBoxWidth)); // by itself a box wants to stay as wide as it has ever been
    }
    for (QWidget *field : std::initializer_list<QWidget *>{priceField, quantityField})
        field->setFixedHeight(ZB::scaled(fieldHeight));
    tradeGroup->setFixedHeight(ZB::scaled(24));
    for (QWidget *line : {limitsText, amountText, mostText, messageText})
        line->setFixedHeight(ZB::scaled(lineHeight));
    unitButton->setFixedSize(ZB::scaled(fieldHeight), ZB::scaled(fieldHeight));
    sendButton->setFixedHeight(ZB::scaled(sendHeight));
    updateWidgetLengths();
}

void TicketForm::themeChanged()
{
    fixSizes();
    ZB::CWidgetList::themeChanged();
}

/// What the quantity is stays.
void TicketForm::switchUnit()
{
    prefersLots = !quantityField->countsLots();
    quantityField->setCountsLots(prefersLots);
    if (KV::CUserConfig *config = KV::getUserConfig())
        config->setValue(lotsPath(), prefersLots);
    fieldEdited();
}

void TicketForm::setSender(Sender newSender)
{
    sender = newSender ? std::move(newSender) : logOrder;
}

void TicketForm::setFundsSource(FundsSource source)
{
    fundsSource = std::move(source);
    refresh();
}

KV::CAccountsComboBox *TicketForm::accountBox() const
{
    return accountBoxes[static_cast<size_t>(std::find(std::begin(trades), std::end(trades), trade) -
                                            std::begin(trades))];
}

ZB::CParameterCell *TicketForm::contractId() const
{
    return contractCell->findChild<ZB::CParameterCell *>();
}

QString TicketForm::code() const
{
    return codeField->getStockCode();
}

QString TicketForm::message() const
{
    return messageText->text();
}

} // namespace terminal
