#include "order/copselectcodewidget.h"

#include <QtGui/QFocusEvent>

#include "kv/cstockcodelineedit.h"
#include "order/coptypebutton.h"
#include "zb/clineedit.h"
#include "zb/cuiresource.h"

namespace KV {

namespace {

constexpr int eventClicked = 5;
constexpr int eventFocusChanged = 245;
constexpr int eventCodeChosen = 1082;
constexpr int eventCodeChanged = 1083;
constexpr int eventDirectionChanged = 1084;
constexpr int directionButtonId = 0;
constexpr auto allTraderTypes = static_cast<kdservice::EVxTraderType>(15990783);

} // namespace

COpSelectCodeWidget::COpSelectCodeWidget(EOpParamWidgetID id, QWidget *parent)
    : ZB::CWidgetList(Qt::Horizontal, parent), widgetId(id)
{
    fixHeight();
    createUi();
    if (codeLineEdit) {
        stockCode = codeLineEdit->getStockCode();
        codeLineEdit->setTradeType(kdservice::TraderFuture);
    }
}

COpSelectCodeWidget::~COpSelectCodeWidget() = default;

void COpSelectCodeWidget::createUi()
{
    setMargins(0, 0, 0, 0);
    setSpacing(0);
    codeLineEdit = new CStockCodeLineEdit(0, 1, this, false);
    addStretchWidget(codeLineEdit, 1, ZB::AnchorFill, false);
    if (!hasDirection())
        return;
    directionButton = new COpTypeButton(directionButtonId, widgetId, this);
    addFixedWidget(directionButton, ZB::AnchorCentre, false);
}

bool COpSelectCodeWidget::hasDirection() const
{
    return (widgetId >= OpParamFirstLegLong && widgetId <= OpParamSecondLegOpen) ||
           (widgetId >= OpParamThirdLegLong && widgetId <= OpParamFourthLegOpen);
}

void COpSelectCodeWidget::fixHeight()
{
    setFixedHeight(ZB::CUiResource::instance()->getSize(QStringLiteral("kv_siz_select_code_widget_height")));
}

void COpSelectCodeWidget::setStockCode(const QString &code)
{
    stockCode = code;
    if (codeLineEdit)
        codeLineEdit->setStockCode(code, false);
}

void COpSelectCodeWidget::setStockCode(const QString &code, const QString &)
{
    setStockCode(code);
}

QString COpSelectCodeWidget::getStockCode() const
{
    return stockCode;
}

void COpSelectCodeWidget::clearCode()
{
    stockCode.clear();
    if (codeLineEdit)
        codeLineEdit->clearCode();
}

void COpSelectCodeWidget::inputStockCodeChar(const QString &text)
{
    if (!codeLineEdit)
        return;
    codeLineEdit->setFocus();
    codeLineEdit->inputStockCodeChar(text);
}

CStockCodeLineEdit *COpSelectCodeWidget::getStockCodeLineEdit() const
{
    return codeLineEdit;
}

void COpSelectCodeWidget::setTradeType(kdservice::EVxTraderType type)
{
    if (codeLineEdit)
        codeLineEdit->setTradeType(type);
}

kdservice::EVxTraderType COpSelectCodeWidget::getTradeType() const
{
    return codeLineEdit ? codeLineEdit->getTradeType() : allTraderTypes;
}

void COpSelectCodeWidget::setOperationType(kdservice::EOperationType type)
{
    if (codeLineEdit)
        codeLineEdit->setOperationType(type);
}

void COpSelectCodeWidget::setStockCodeLineEditFlag(EFilterFlag flags)
{
    if (codeLineEdit)
        codeLineEdit->setFlag(flags);
}

void COpSelectCodeWidget::setWhiteList(const QMap<QString, QSet<QString>> &codes, bool clearOthers)
{
    if (codeLineEdit)
        codeLineEdit->setWhiteList(codes, clearOthers);
}

void COpSelectCodeWidget::setEnableAll()
{
    if (codeLineEdit)
        codeLineEdit->setEnableAll();
}

void COpSelectCodeWidget::setBorderWidth(int pixels)
{
    if (codeLineEdit)
        codeLineEdit->setBorderWidth(pixels);
}

void COpSelectCodeWidget::setTextFontKey(const QString &key)
{
    if (codeLineEdit)
        codeLineEdit->setTextFontKey(key);
}

void COpSelectCodeWidget::setEmptyHintText(const QString &text)
{
    if (codeLineEdit)
        codeLineEdit->getLineEdit()->setEmptyHintText(text);
}

void COpSelectCodeWidget::setOpEnabled(bool enabled)
{
    if (codeLineEdit)
        codeLineEdit->setEnabled(enabled);
}

bool COpSelectCodeWidget::isLong() const
{
    return directionButton && directionButton->isLong();
}

void COpSelectCodeWidget::setDirection(bool isLong)
{
    if (directionButton)
        directionButton->setDirection(isLong);
}

void COpSelectCodeWidget::setLocked(bool locked)
{
    if (directionButton)
        directionButton->setEnabled(!locked);
}

void COpSelectCodeWidget::setFixFont()
{
    ZB::CWidgetList::setFixFont();
    if (codeLineEdit)
        codeLineEdit->themeChanged();
    if (directionButton)
        directionButton->themeChanged();
}

bool COpSelectCodeWidget::handleEvent(int event, int first, int second, QString text, void *pointer)
{
    if (event == eventClicked && first == directionButtonId && directionButton) {
        directionButton->switchDirection();
        deliverEvent(eventDirectionChanged, widgetId, isLong() ? 1 : 0, QString(), nullptr);
        return true;
    }
    if (event == eventCodeChosen) {
        stockCode = text;
        deliverEvent(eventCodeChanged, widgetId, 0, text, nullptr);
        return true;
    }
    // What it sends starts its trip here: its own goes on upwards.
    if (event == eventFocusChanged && pointer != this) {
        deliverEvent(eventFocusChanged, widgetId, second, QString(), this);
        return true;
    }
    return ZB::CWidgetList::handleEvent(event, first, second, text, pointer);
}

void COpSelectCodeWidget::scaleChanged()
{
    fixHeight();
    updateWidgetLengths();
    ZB::CWidgetList::scaleChanged();
}

void COpSelectCodeWidget::focusInEvent(QFocusEvent *event)
{
    ZB::CWidgetList::focusInEvent(event);
    if (codeLineEdit)
        codeLineEdit->setFocus(event->reason());
}

} // namespace KV
