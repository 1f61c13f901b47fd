#include "window/tradepage.h"

#include <QtWidgets/QSplitter>
#include <QtWidgets/QVBoxLayout>

#include "kv/cuserconfig.h"
#include "order/cquotespriceslist.h"
#include "window/ladderpanel.h"
#include "window/paneltabs.h"
#include "window/quotepanel.h"
#include "zb/cuiresource.h"

namespace terminal {

namespace {

const QString layoutPath = QStringLiteral("page/trade/ladder");
const QString columnsPath = QStringLiteral("page/trade/columns");
const QString leftPath = QStringLiteral("page/trade/left");

constexpr int ladderPriceType = 1127;
constexpr int ladderPrice = 1128;
constexpr int ladderVolume = 1129;
constexpr int ladderCancel = 1243;

} // namespace

TradePage::TradePage(FeedPump &feedPump, QWidget *parent)
    : Page(QStringLiteral("trade"), QStringLiteral("交易"), parent), pump(feedPump),
      columns(new QSplitter(Qt::Horizontal, this)), left(new QSplitter(Qt::Vertical, columns)),
      quotes(new QuotePanel(left)), ladderPanel(new LadderPanel(columns)), bottom(new PanelTabs(left))
{
    side = new QSplitter(Qt::Vertical, columns);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(columns);
    columns->setStretchFactor(0, 1);
    columns->setStretchFactor(1, 0);
    columns->setStretchFactor(2, 0);
    left->setStretchFactor(0, 1);
    left->setStretchFactor(1, 1);
    for (QSplitter *splitter : {columns, left, side})
        splitter->setChildrenCollapsible(false);
    side->hide();
    bottom->hide();
    connect(quotes, &QuotePanel::codeChosen, this, &TradePage::setCurrentCode);
    connect(quotes, &QuotePanel::codeActivated, this, [this](const QString &code) {
        if (setCurrentCode(code))
            Q_EMIT codeActivated(code);
    });
    pump.addListener(*this);
    TradePage::themeChanged();
}

TradePage::~TradePage() = default;

std::vector<Panel *> TradePage::panels() const
{
    std::vector<Panel *> all{quotes, ladderPanel};
    for (int i = 0; i < side->count(); ++i)
        all.push_back(static_cast<Panel *>(side->widget(i)));
    if (Panel *panel = bottom->currentPanel())
        all.push_back(panel);
    return all;
}

void TradePage::addSidePanel(Panel *panel)
{
    side->addWidget(panel);
    side->show();
}

void TradePage::addBottomPanel(Panel *panel, const QString &title)
{
    bottom->addPanel(panel, title);
    if (!bottom->isHidden())
        return;
    bottom->show();
    left->setSizes({600, 400}); // a share each: the splitter scales them to its height
}

QString TradePage::currentCode() const
{
    const feed::Instrument *instrument = currentInstrument();
    return instrument ? QString::fromStdString(instrument->code) : QString();
}

const feed::Instrument *TradePage::currentInstrument() const
{
    return current < 0 ? nullptr : &known[static_cast<size_t>(current)].instrument;
}

const feed::QuoteSnapshot *TradePage::currentQuote() const
{
    if (current < 0)
        return nullptr;
    const auto &quote = known[static_cast<size_t>(current)].quote;
    return quote ? &*quote : nullptr;
}

bool TradePage::setCurrentCode(const QString &code)
{
    const auto found = indexOfCode.constFind(code);
    if (found == indexOfCode.constEnd())
        return false;
    if (*found == current)
        return true;
    current = *found;
    showCurrent();
    quotes->setCurrentCode(code);
    Q_EMIT currentCodeChanged(code);
    return true;
}

void TradePage::showCurrent()
{
    ladderPanel->setInstrument(*currentInstrument());
    if (const feed::QuoteSnapshot *quote = currentQuote())
        ladderPanel->setQuote(*quote, known[static_cast<size_t>(current)].sinceQuote.elapsed());
    ladderPanel->setQuotesExpected(expectsQuotes());
}

void TradePage::takeQuotes(const FeedPump::Records &records)
{
    quotes->take(records);
}

void TradePage::takeInstrument(const feed::Instrument &instrument)
{
    const auto index = static_cast<size_t>(instrument.index);
    if (index >= known.size())
        known.resize(index + 1);
    known[index].instrument = instrument;
    const QString code = QString::fromStdString(instrument.code);
    indexOfCode.insert(code, instrument.index);
    if (current < 0)
        setCurrentCode(code);
    else if (current == instrument.index)
        ladderPanel->setInstrument(instrument);
}

void TradePage::takeQuote(const feed::QuoteSnapshot &quote)
{
    const auto index = static_cast<size_t>(quote.instrument);
    if (quote.instrument < 0 || index >= known.size())
        return;
    known[index].quote = quote;
    known[index].sinceQuote.start();
    if (quote.instrument == current)
        ladderPanel->setQuote(quote, 0);
}

/// While the market rests, or the user holds it, silence means nothing.
bool TradePage::expectsQuotes() const
{
    if (pump.isPaused() || pump.isFinished())
        return false;
    const feed::QuoteSnapshot *quote = currentQuote();
    if (!quote)
        return false;
    switch (quote->phase) {
    case feed::TradingPhase::OpeningAuction:
    case feed::TradingPhase::Continuous:
    case feed::TradingPhase::ClosingAuction:
    case feed::TradingPhase::Unknown:
        return true;
    case feed::TradingPhase::BeforeOpening:
    case feed::TradingPhase::BeforeContinuous:
    case feed::TradingPhase::LunchBreak:
    case feed::TradingPhase::Closed:
    case feed::TradingPhase::JustClosed:
    case feed::TradingPhase::AfterHours:
        break;
    }
    return false;
}

bool TradePage::handleEvent(int event, int first, int second, QString text, void *)
{
    if (event == ladderPriceType || event == ladderPrice || event == ladderVolume || event == ladderCancel)
        Q_EMIT ladderClicked(event, first, second, text);
    return false;
}

void TradePage::refresh()
{
    ladderPanel->setQuotesExpected(expectsQuotes());
    ladderPanel->ladder().setFeedCut(pump.hasFailed());
    Page::refresh();
}

void TradePage::toggleLayout()
{
    ladderPanel->toggleLayoutKind();
}

void TradePage::loadState()
{
    const KV::CUserConfig *config = KV::getUserConfig();
    if (!config)
        return;
    bool isNumber = false;
    const int kind = config->value(layoutPath).toInt(&isNumber);
    if (isNumber && kind >= KV::QuoteLevel2Vertical && kind <= KV::QuoteNormal)
        ladderPanel->setLayoutKind(static_cast<KV::EQuoteType>(kind));
    columns->restoreState(config->value(columnsPath).toByteArray());
    left->restoreState(config->value(leftPath).toByteArray());
    TradePage::themeChanged();
}

void TradePage::saveState() const
{
    KV::CUserConfig *config = KV::getUserConfig();
    if (!config)
        return;
    config->setValue(layoutPath, int(ladderPanel->layoutKind()));
    config->setValue(columnsPath, columns->saveState());
    config->setValue(leftPath, left->saveState());
}

void TradePage::themeChanged()
{
    for (QSplitter *splitter : {columns, left, side})
        splitter->setHandleWidth(ZB::scaled(4));
}

} // namespace terminal
