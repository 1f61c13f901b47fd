#include "order/crateselectwidget.h"

#include <QtGui/QKeyEvent>

#include "zb/cradiobuttongroup.h"
#include "zb/csmallnormalbutton.h"
#include "zb/cuiresource.h"

namespace KV {

namespace {

constexpr int eventClicked = 5;
constexpr int eventReferenceChanged = 1073;
constexpr int referenceButtonId = 0;
constexpr int stripHeight = 20;
constexpr int buttonWidth = 44;
constexpr int buttonGap = 4;

} // namespace

CRateSelectWidget::CRateSelectWidget(QWidget *parent) : ZB::CWidgetList(Qt::Horizontal, parent)
{
    createUi();
    setFocusPolicy(Qt::NoFocus);
}

CRateSelectWidget::~CRateSelectWidget() = default;

void CRateSelectWidget::createUi()
{
    setMargins(0, 0, 0, 0);
    setSpacing(0);
    referenceButton = new ZB::CSmallNormalButton(referenceButtonId, true, ZB::NormalButtonRaised, this);
    referenceButton->setFocusPolicy(Qt::NoFocus);
    rateGroup = new ZB::CRadioButtonGroup(this, 0, 0, false, Qt::Horizontal);
    const QString tip = QStringLiteral("比例按可用或全部资金计算，点击或按 * 键切换");
    referenceButton->setToolTip(tip);
    rateGroup->setAccessibleName(QStringLiteral("下单比例"));
    rateGroup->setAccessibleDescription(tip);
    rateGroup->addButton(QStringLiteral("全部"), 1);
    rateGroup->addButton(QStringLiteral("1/2"), 2);
    rateGroup->addButton(QStringLiteral("1/3"), 3);
    rateGroup->addButton(QStringLiteral("1/4"), 4);
    updateButtonText();
    fixSizes();
    addFixedWidget(referenceButton, ZB::AnchorCentre);
    addFixedSpace(buttonGap);
    addFixedWidget(rateGroup, ZB::AnchorCentre);
}

void CRateSelectWidget::fixSizes()
{
    setFixedHeight(ZB::scaled(stripHeight));
    if (referenceButton)
        referenceButton->setFixedSize(ZB::scaled(buttonWidth), ZB::scaled(stripHeight));
}

int CRateSelectWidget::getCheckedButtonID() const
{
    return rateGroup ? rateGroup->checkedId() : -1;
}

void CRateSelectWidget::setButtonCheckedByID(int id)
{
    if (rateGroup)
        rateGroup->setCheckedById(id);
}

ERateReference CRateSelectWidget::getRateReference() const
{
    return rateReference;
}

void CRateSelectWidget::setRateReference(ERateReference reference)
{
    rateReference = reference;
    updateButtonText();
}

void CRateSelectWidget::setTradeType(kdservice::EVxTraderType type)
{
    tradeType = type;
    updateButtonText();
}

void CRateSelectWidget::setBtnType(ZB::ENormalButtonType type)
{
    if (referenceButton)
        referenceButton->setButtonType(type);
}

void CRateSelectWidget::updateButtonText()
{
    if (!referenceButton)
        return;
    if (rateReference == RateOfAvailable)
        referenceButton->setText(QStringLiteral("可　用"));
    else if (rateReference != RateOfTotal)
        return;
    else if (tradeType == kdservice::TraderStock || tradeType == kdservice::TraderOption)
        referenceButton->setText(QStringLiteral("总资产"));
    else if (tradeType == kdservice::TraderFuture)
        referenceButton->setText(QStringLiteral("权　益"));
}

bool CRateSelectWidget::handleEvent(int event, int first, int second, QString text, void *pointer)
{
    if (event != eventClicked)
        return ZB::CWidgetList::handleEvent(event, first, second, text, pointer);
    if (first == referenceButtonId) {
        setRateReference(static_cast<ERateReference>((rateReference + 1) % 2));
        deliverEvent(eventReferenceChanged, 0, 0, QString(), nullptr);
    }
    return true;
}

/// The fractions have the focus and pass on what they have no use for. A key that is held down switches once.
void CRateSelectWidget::keyPressEvent(QKeyEvent *event)
{
    const Qt::KeyboardModifiers others = event->modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier);
    if (event->key() != Qt::Key_Asterisk || others != Qt::NoModifier || !referenceButton)
        ZB::CWidgetList::keyPressEvent(event);
    else if (!event->isAutoRepeat())
        referenceButton->click();
}

void CRateSelectWidget::scaleChanged()
{
    fixSizes();
    updateWidgetLengths();
    ZB::CWidgetList::scaleChanged();
}

} // namespace KV
