#include "order/cquotesgraphwidget.h"

#include <QtCore/QEvent>
#include <QtGui/QFontMetrics>
#include <log4cxx/logger.h>

#include "kdservice/evxtradertype.h"
#include "order/cquotesaccessible.h"
#include "order/cquoteshorizontallayout.h"
#include "order/cquoteslevel2painter.h"
#include "order/cquotesnormallayout.h"
#include "order/cquotesnormalpainter.h"
#include "order/cquotesverticallayout.h"
#include "utils/clogcenter.h"

namespace KV {

using namespace quotevalue;

namespace {

constexpr int creditTradeType = 128;
constexpr int stockOptionTradeType = 16384;
/// Milliseconds between two pictures of a busy quote: more than a screen shows is painted for nobody.
constexpr int frameTime = 16;
const QSize digitCell(12, 12);

} // namespace

CQuotesGraphWidget::CQuotesGraphWidget(QWidget *parent)
    : CBaseWidget(parent, QStringLiteral("mqlt_tavesk_quotepriceslist")), look(QuoteLook::fromResources()),
      digitImage(*look.numberFont, digitCell)
{
    CQuotesAccessible::install();
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
    CQuotesGraphWidget::themeChanged();
}

CQuotesGraphWidget::~CQuotesGraphWidget() = default;

void CQuotesGraphWidget::themeChanged()
{
    look = QuoteLook::fromResources();
    const QFontMetrics names(*look.nameFont);
    metrics = {names.height(), names.horizontalAdvance(QStringLiteral("卖")), digitImage.cellSize()};
    digitImage.setFont(*look.numberFont);
    update();
}

void CQuotesGraphWidget::scaleChanged()
{
    CBaseWidget::scaleChanged();
}

void CQuotesGraphWidget::setStockCode(const QString &code)
{
    const log4cxx::LoggerPtr logger = utils::getLogger("KDDbgFile");
    if (logger->isDebugEnabled()) {
        const std::string rule = "========================================";
        const QString told = QString::asprintf("Set stock code to %s.", code.toUtf8().constData());
        for (const std::string &line : {std::string(), rule, told.toStdString(), rule, std::string()})
            LOG4CXX_DEBUG(logger, line);
    }
    if (code != stockCode) {
        view.clearQuote();
        stockCode = code;
        sinceSnapshot.invalidate();
        setCursorLevel(std::nullopt);
        updateAge();
    }
    update();
}

std::size_t CQuotesGraphWidget::levelCount() const
{
    return tradeType == creditTradeType || tradeType == stockOptionTradeType ? 1 : 5;
}

void CQuotesGraphWidget::takeLevels(std::vector<CQuoteData> &side, const std::array<double, 5> *prices,
                                    const std::array<qint64, 5> *volumes) const
{
    side.resize(levelCount());
    for (std::size_t i = 0; i < side.size(); ++i)
        side[i] = prices ? CQuoteData((*prices)[i], volumeOf((*volumes)[i])) : CQuoteData(noPrice, noVolume);
}

void CQuotesGraphWidget::setQuoterAllData(boost::shared_ptr<quoter::QuoterAllData> quote,
                                          boost::shared_ptr<kdservice::CInstrumentDetail> detail)
{
    const bool given = quote && detail;
    ageWhenGiven = 0;
    if (given) {
        snapshot = std::move(quote);
        instrument = std::move(detail);
        sinceSnapshot.start();
    } else {
        snapshot.reset();
        instrument.reset();
        sinceSnapshot.invalidate();
    }
    view.latest = given ? snapshot->latestPrice : noPrice;
    view.previousClose = given ? snapshot->previousClose : noPrice;
    view.change = quotevalue::change(view.latest, view.previousClose);
    view.upperLimit = given ? instrument->upperLimitPrice : noPrice;
    view.lowerLimit = given ? instrument->lowerLimitPrice : noPrice;
    view.tick = given ? instrument->priceTick : noPrice;
    takeLevels(view.bids, given ? &snapshot->bidPrices : nullptr, given ? &snapshot->bidVolumes : nullptr);
    takeLevels(view.asks, given ? &snapshot->askPrices : nullptr, given ? &snapshot->askVolumes : nullptr);
    if (!view.age.isEmpty() || given != ageTimer.isActive())
        updateAge();
    updateWithFrame();
}

/// The event loop would paint after each of its turns, a thousand times a second when snapshots come as fast.
void CQuotesGraphWidget::updateWithFrame()
{
    const qint64 age = sincePaint.isValid() ? sincePaint.elapsed() : frameTime;
    if (age >= frameTime)
        update();
    else if (!frameTimer.isActive())
        frameTimer.start(frameTime - static_cast<int>(age), Qt::PreciseTimer, this);
}

void CQuotesGraphWidget::setTradeType(int type)
{
    tradeType = type;
    view.tradeType = type;
    update();
}

void CQuotesGraphWidget::setQuoteType(int type)
{
    quoteType = type;
    update();
}

void CQuotesGraphWidget::setOrderNum(qint64 buying, qint64 selling)
{
    view.buyOrders = buying;
    view.sellOrders = selling;
    update();
}

void CQuotesGraphWidget::setShowCancelOrder(bool show)
{
    showCancel = show;
    update();
}

void CQuotesGraphWidget::setCanUseQuickOrder(bool can)
{
    canUseQuickOrder = can;
    quickOrder = quickOrder && can;
}

void CQuotesGraphWidget::setQuickOrder(bool quick)
{
    quickOrder = quick && canUseQuickOrder;
}

void CQuotesGraphWidget::timerEvent(QTimerEvent *event)
{
    if (event->timerId() == ageTimer.timerId()) {
        updateAge();
    } else if (event->timerId() == frameTimer.timerId()) {
        frameTimer.stop();
        update();
    } else {
        CBaseWidget::timerEvent(event);
    }
}

bool CQuotesGraphWidget::hasTwoLevelKinds() const
{
    return tradeType == kdservice::TraderStock || tradeType == kdservice::TraderOption;
}

CQuotesGraphWidget::Painter CQuotesGraphWidget::painterKind() const
{
    if (!hasTwoLevelKinds() || quoteType == QuoteNormal)
        return Painter::Normal;
    if (quoteType == QuoteLevel2Vertical)
        return Painter::Vertical;
    return quoteType == QuoteLevel2Horizontal ? Painter::Horizontal : Painter::None;
}

QuotesLayout CQuotesGraphWidget::places() const
{
    const QSize size(cachedWidth, cachedHeight);
    switch (painterKind()) {
    case Painter::Normal:
        return CQuotesNormalLayout(size, metrics, showCancel);
    case Painter::Vertical:
        return CQuotesVerticalLayout(size, metrics, showCancel);
    case Painter::Horizontal:
        return CQuotesHorizontalLayout(size, metrics, showCancel);
    case Painter::None:
        break;
    }
    return {};
}

void CQuotesGraphWidget::draw(Painter kind)
{
    QPainter painter(this);
    const QuotesLayout layout = places();
    view.cursor = hasFocus() ? cursorLevel : std::nullopt;
    if (kind == Painter::Normal)
        CQuotesNormalPainter(painter, look, layout, view, digitImage, areas).paint();
    else
        CQuotesLevel2Painter(painter, look, layout, view, digitImage, areas).paint();
}

void CQuotesGraphWidget::paintEvent(QPaintEvent *)
{
    sincePaint.start();
    frameTimer.stop();
    areas.clear();
    view.mouse = pointer();
    if (painterKind() != Painter::None)
        draw(painterKind());
    updateHand();
    CQuotesAccessible::tellChanges(this);
}

void CQuotesGraphWidget::resizeEvent(QResizeEvent *event)
{
    CBaseWidget::resizeEvent(event);
    cachedWidth = width();
    cachedHeight = height();
}

void CQuotesGraphWidget::changeEvent(QEvent *event)
{
    CBaseWidget::changeEvent(event);
    if (event->type() == QEvent::EnabledChange)
        updateAge();
}

} // namespace KV
