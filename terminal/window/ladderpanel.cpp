#include "window/ladderpanel.h"

#include <QtCore/QEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QButtonGroup>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QVBoxLayout>
#include <algorithm>
#include <boost/make_shared.hpp>

#include "order/cquotesgraphwidget.h"
#include "order/cquotespriceslist.h"
#include "window/barbutton.h"
#include "window/ladderheader.h"
#include "zb/cuiresource.h"

namespace terminal {

namespace {

/// Quotes come every three seconds; ten of them missing in a row are no chance.
constexpr int silenceMs = 30'000;

const struct
{
    KV::EQuoteType kind;
    const char *text;
    const char *tip;
} kinds[] = {{KV::QuoteNormal, "五档", "五档行情"},
             {KV::QuoteLevel2Vertical, "竖排", "五档行情，带快捷价格和撤单，上下排列"},
             {KV::QuoteLevel2Horizontal, "横排", "五档行情，带快捷价格和撤单，左右排列"}};

boost::shared_ptr<quoter::QuoterAllData> ladderQuote(const feed::QuoteSnapshot &quote,
                                                     const feed::Instrument &instrument)
{
    static_assert(quoter::QuoterAllData::depth <= feed::QuoteSnapshot::depth);
    auto shown = boost::make_shared<quoter::QuoterAllData>();
    shown->latestPrice = quote.last;
    shown->previousClose = feed::referencePrice(quote, instrument);
    for (std::size_t i = 0; i < quoter::QuoterAllData::depth; ++i) {
        shown->askPrices[i] = quote.asks[i].price;
        shown->askVolumes[i] = quote.asks[i].quantity;
        shown->bidPrices[i] = quote.bids[i].price;
        shown->bidVolumes[i] = quote.bids[i].quantity;
    }
    return shown;
}

boost::shared_ptr<kdservice::CInstrumentDetail> ladderDetail(const feed::QuoteSnapshot &quote,
                                                             const feed::Instrument &instrument)
{
    const auto either = [](double first, double second) { return first != feed::absent<double> ? first : second; };
    auto detail = boost::make_shared<kdservice::CInstrumentDetail>();
    detail->upperLimitPrice = either(quote.upperLimit, instrument.upperLimit);
    detail->lowerLimitPrice = either(quote.lowerLimit, instrument.lowerLimit);
    detail->priceTick = instrument.tick;
    return detail;
}

} // namespace

LadderPanel::LadderPanel(QWidget *parent) : Panel(QStringLiteral("盘口"), parent)
{
    auto *contents = new QWidget(this);
    auto *layout = new QVBoxLayout(contents);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    title = new LadderHeader(contents);
    scroll = new QScrollArea(contents);
    list = new KV::CQuotesPricesList(KV::OpParamQuotes, scroll);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setAlignment(Qt::AlignTop | Qt::AlignHCenter);
    scroll->setFocusPolicy(Qt::NoFocus);
    scroll->setWidget(list);
    scroll->viewport()->setAutoFillBackground(false); // the panel's own background shows
    layout->addWidget(title);
    layout->addWidget(scroll, 1);
    contents->setFocusProxy(list);
    setContents(contents);
    addKindButtons();
    graph = list->findChild<KV::CQuotesGraphWidget *>();
    list->setQuoteType(kind);
    list->setSilenceLimit(silenceMs);
    list->installEventFilter(this);
    graph->installEventFilter(this);
    applyLook();
}

LadderPanel::~LadderPanel() = default;

void LadderPanel::addKindButtons()
{
    auto *group = new QButtonGroup(this);
    for (const auto &each : kinds) {
        auto *button = new BarButton(this);
        button->setText(QString::fromUtf8(each.text));
        button->setToolTip(QString::fromUtf8(each.tip));
        button->setCheckable(true);
        button->setChecked(each.kind == kind);
        group->addButton(button);
        addTitleWidget(button);
        connect(button, &BarButton::clicked, this, [this, chosen = each.kind] { setLayoutKind(chosen); });
        kindButtons.push_back({each.kind, button});
    }
}

void LadderPanel::setInstrument(const feed::Instrument &shown)
{
    instrument = shown;
    const bool isFuture = shown.kind == feed::InstrumentKind::Future;
    const QString code = QString::fromStdString(shown.code);
    title->setInstrument(code, QString::fromStdString(shown.name));
    list->setTradeType(isFuture ? kdservice::TraderFuture : kdservice::TraderStock);
    list->setStockCode(code);
    latest = painted = {};
    for (const KindButton &each : kindButtons)
        each.button->setEnabled(!isFuture);
}

void LadderPanel::setQuote(const feed::QuoteSnapshot &quote, qint64 age)
{
    latest = quote;
    list->setQuoterAllData(ladderQuote(quote, instrument), ladderDetail(quote, instrument));
    if (age > 0)
        list->setQuoteAge(age);
}

double LadderPanel::shownPrice(int level, int side) const
{
    const auto &levels = side == int(feed::Side::Buy) ? painted.bids : painted.asks;
    return level >= 1 && level <= feed::QuoteSnapshot::depth ? levels[size_t(level - 1)].price : feed::absent<double>;
}

void LadderPanel::setCancelsShown(bool shown)
{
    showsCancels = shown;
    setLayoutKind(kind);
}

void LadderPanel::setQuotesExpected(bool expected)
{
    list->setSilenceLimit(expected ? silenceMs : 0);
}

void LadderPanel::setLayoutKind(KV::EQuoteType chosen)
{
    kind = chosen;
    list->setQuoteType(kind);
    list->setShowCancelOrder(showsCancels && kind != KV::QuoteNormal);
    for (const KindButton &each : kindButtons)
        each.button->setChecked(each.kind == kind);
}

void LadderPanel::toggleLayoutKind()
{
    const auto *now =
        std::find_if(std::begin(kinds), std::end(kinds), [this](const auto &e) { return e.kind == kind; });
    setLayoutKind(now == std::end(kinds) || now + 1 == std::end(kinds) ? kinds[0].kind : now[1].kind);
}

void LadderPanel::themeChanged()
{
    Panel::themeChanged();
    applyLook();
}

void LadderPanel::applyLook()
{
    const WindowLook fresh = WindowLook::fromResources();
    for (const KindButton &each : kindButtons)
        each.button->setLook(fresh);
    background = fresh.background;
    fitWidth();
}

/// As wide as the ladder, and its scroll bar where it has one.
void LadderPanel::fitWidth()
{
    const bool scrolls = list->height() > scroll->height();
    setFixedWidth(list->width() + (scrolls ? scroll->verticalScrollBar()->sizeHint().width() : 0));
}

void LadderPanel::paintEvent(QPaintEvent *event)
{
    QPainter(this).fillRect(rect(), background);
    Panel::paintEvent(event);
}

bool LadderPanel::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == list && event->type() == QEvent::Resize)
        fitWidth();
    else if (watched == graph && event->type() == QEvent::Paint)
        painted = latest;
    return Panel::eventFilter(watched, event);
}

void LadderPanel::resizeEvent(QResizeEvent *event)
{
    Panel::resizeEvent(event);
    fitWidth();
}

} // namespace terminal
