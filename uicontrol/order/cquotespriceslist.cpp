#include "order/cquotespriceslist.h"

#include <QtGui/QKeyEvent>

#include <algorithm>

#include "kv/cstockcodelineedit.h"
#include "order/cquotesgraphwidget.h"
#include "zb/clineedit.h"
#include "zb/cuiresource.h"

namespace KV {

namespace {

constexpr int greatestWidth = 230;
constexpr int greatestBroadWidth = 400;
constexpr int cancelHeight = 15;

} // namespace

CQuotesPricesList::CQuotesPricesList(EOpParamWidgetID, QWidget *parent)
    : CWidgetList(Qt::Vertical, parent), graph(new CQuotesGraphWidget(this))
{
    setMargins(0, 0, 0, 0);
    setSpacing(0);
    addStretchWidget(graph, 1, 3);
    setFocusProxy(graph);
    resizeLayout();
}

CQuotesPricesList::~CQuotesPricesList() = default;

void CQuotesPricesList::setSelectCodeWidget(CSelectCodeWidget *widget)
{
    if (selector == widget)
        return;
    if (selector) {
        disconnect(selector, &QObject::destroyed, this, &CQuotesPricesList::resizeLayout);
        removeWidget(selector);
    }
    selector = widget;
    if (selector) {
        addFixedWidgetInFront(selector, 3);
        selector->setVisible(true);
        handOnTradeType();
        // Queued: a widget tells of its end while guarded pointers still lead to it.
        connect(selector, &QObject::destroyed, this, &CQuotesPricesList::resizeLayout, Qt::QueuedConnection);
    }
    resizeLayout();
}

CSelectCodeWidget *CQuotesPricesList::getSelectCodeWidget() const
{
    return selector;
}

QString CQuotesPricesList::getStockCode() const
{
    return selector ? selector->getStockCode() : QString();
}

void CQuotesPricesList::inputStockCodeChar(QString text)
{
    if (!selector || !selector->getStockCodeLineEdit())
        return;
    CStockCodeLineEdit *edit = selector->getStockCodeLineEdit();
    selector->setEditing(true);
    edit->show();
    edit->getLineEdit()->clear();
    edit->inputStockCodeChar(text);
}

void CQuotesPricesList::setCodeEditFocus()
{
    if (!selector || !selector->getStockCodeLineEdit())
        return;
    CStockCodeLineEdit *edit = selector->getStockCodeLineEdit();
    edit->show();
    edit->setFocus(Qt::OtherFocusReason);
    selector->setCompletionSuppressed(false);
    selector->setEditing(true);
    edit->getLineEdit()->selectAll();
    selector->relayoutPopup();
}

void CQuotesPricesList::setStockCode(QString code)
{
    graph->setStockCode(code);
}

void CQuotesPricesList::setTradeType(kdservice::EVxTraderType type)
{
    graph->setTradeType(type);
    tradeType = type;
    handOnTradeType();
    resizeLayout();
}

void CQuotesPricesList::handOnTradeType()
{
    if (!selector)
        return;
    const auto type = static_cast<kdservice::EVxTraderType>(tradeType);
    selector->setTradeType(type);
    if (selector->getStockCodeLineEdit())
        selector->getStockCodeLineEdit()->setTradeType(type);
}

void CQuotesPricesList::setQuoteType(EQuoteType type)
{
    quoteType = type;
    graph->setQuoteType(type);
    resizeLayout();
}

void CQuotesPricesList::setQuoterAllData(boost::shared_ptr<quoter::QuoterAllData> quote,
                                         boost::shared_ptr<kdservice::CInstrumentDetail> detail)
{
    graph->setQuoterAllData(std::move(quote), std::move(detail));
}

void CQuotesPricesList::setOrderNum(qint64 buying, qint64 selling)
{
    graph->setOrderNum(buying, selling);
}

void CQuotesPricesList::setShowCancelOrder(bool show)
{
    showCancel = show;
    graph->setShowCancelOrder(show);
    resizeLayout();
}

void CQuotesPricesList::setDrawTop(bool drawTop)
{
    if (!selector)
        return;
    selector->setDrawTop(drawTop);
    selector->update();
}

void CQuotesPricesList::setOperationType(kdservice::EOperationType type)
{
    if (selector && selector->getStockCodeLineEdit())
        selector->getStockCodeLineEdit()->setOperationType(type);
}

void CQuotesPricesList::setCanUseQuickOrder(bool can)
{
    graph->setCanUseQuickOrder(can);
}

void CQuotesPricesList::setQuickOrder(bool quick)
{
    graph->setQuickOrder(quick);
}

bool CQuotesPricesList::isQuickOrder() const
{
    return graph->isQuickOrder();
}

void CQuotesPricesList::setTradeOpType(quint64 type)
{
    Q_ASSERT(selector);
    if (selector)
        selector->setTradeOpType(type);
}

void CQuotesPricesList::setUiEnabled(bool selectorEnabled, bool quoteEnabled)
{
    if (selector)
        selector->setEnabled(selectorEnabled);
    graph->setEnabled(quoteEnabled);
}

void CQuotesPricesList::setSilenceLimit(int milliseconds)
{
    graph->setSilenceLimit(milliseconds);
}

void CQuotesPricesList::setQuoteAge(qint64 milliseconds)
{
    graph->setQuoteAge(milliseconds);
}

void CQuotesPricesList::setFeedCut(bool cut)
{
    graph->setFeedCut(cut);
}

void CQuotesPricesList::themeChanged()
{
    CWidgetList::themeChanged();
    resizeLayout();
}

void CQuotesPricesList::scaleChanged()
{
    CWidgetList::scaleChanged();
    resizeLayout();
    update();
}

void CQuotesPricesList::resizeLayout()
{
    ZB::CUiResource *resources = ZB::CUiResource::instance();
    int height = 0;
    if (selector) {
        height = selector->preferredHeight();
        selector->setFixedHeight(height);
    }
    const bool hasTwoLevelKinds = tradeType == kdservice::TraderStock || tradeType == kdservice::TraderOption;
    QString widthKey = QStringLiteral("kv_siz_code_quotes_width");
    QString heightKey = QStringLiteral("kv_siz_code_quotes_height");
    const bool sideBySide = hasTwoLevelKinds && quoteType == QuoteLevel2Horizontal;
    if (hasTwoLevelKinds && quoteType == QuoteLevel2Vertical) {
        heightKey = QStringLiteral("kv_siz_code_quotes_height_L2V");
    } else if (sideBySide) {
        widthKey = QStringLiteral("kv_siz_code_quotes_width_L2H");
        heightKey = QStringLiteral("kv_siz_code_quotes_height_L2H");
    } else if (hasTwoLevelKinds && quoteType != QuoteNormal) {
        setFixedSize(0, 0);
        update();
        return;
    }
    height += resources->getSize(heightKey) + (showCancel ? ZB::scaled(cancelHeight) : 0);
    const int greatest = ZB::scaled(sideBySide ? greatestBroadWidth : greatestWidth);
    setFixedSize(std::min(resources->getSize(widthKey), greatest), height);
    graph->update();
}

/// Letters and digits that the quote has no use for start the entry of another code.
void CQuotesPricesList::keyPressEvent(QKeyEvent *event)
{
    const QString text = event->text();
    const bool isCode = text.size() == 1 && text.at(0).isLetterOrNumber() &&
                        (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) == 0;
    if (isCode && selector)
        inputStockCodeChar(text);
    else
        CWidgetList::keyPressEvent(event);
}

} // namespace KV
