#pragma once

#include <QtCore/QElapsedTimer>
#include <QtCore/QHash>
#include <optional>

#include "window/feedpump.h"
#include "window/marketlistener.h"
#include "window/page.h"
#include "zb/ceventdeliverer.h"
#include "zb/cuiresourcechangehandler.h"

class QSplitter;

namespace terminal {

class LadderPanel;
class PanelTabs;
class QuotePanel;

/// Where a trader works: the quote list, the ladder of one instrument, and the panels that are added: at the side (the
/// order ticket) and in tabs below the quotes (orders, deals, positions, funds).
///
/// The quote list, the ladder and whoever calls setCurrentCode() agree on one instrument. What the user clicks in the
/// ladder arrives here as host events; it is told by ladderClicked() and goes on to the window.
class TradePage : public Page, public MarketListener, public ZB::CEventDeliverer, public ZB::CUiResourceChangeHandler
{
    Q_OBJECT

public:
    /// Listens to the pump, which has to outlive the page and must not have been started.
    explicit TradePage(FeedPump &pump, QWidget *parent = nullptr);
    ~TradePage() override;

    QuotePanel &quoteList() const { return *quotes; }
    LadderPanel &ladder() const { return *ladderPanel; }
    PanelTabs &bottomPanels() const { return *bottom; }
    std::vector<Panel *> panels() const override;

    /// Becomes the panel's parent. One below the other at the right edge, as wide as the widest asks to be.
    void addSidePanel(Panel *panel);
    /// Becomes the panel's parent. A tab below the quotes.
    void addBottomPanel(Panel *panel, const QString &title);

    /// The code of the instrument in the ladder; empty before the first one is known.
    QString currentCode() const;
    /// False for a code that the feed has not told of; nothing changes then.
    bool setCurrentCode(const QString &code);
    /// Null before the first one is known. Valid until the next event of the feed.
    const feed::Instrument *currentInstrument() const;
    /// The latest quote of the current instrument; null before it comes. Valid until the next event of the feed.
    const feed::QuoteSnapshot *currentQuote() const;

    void takeQuotes(const FeedPump::Records &records);
    void takeInstrument(const feed::Instrument &instrument) override;
    void takeQuote(const feed::QuoteSnapshot &quote) override;

    bool handleEvent(int event, int first, int second, QString text, void *data) override;
    void refresh() override;
    /// The next of the ladder's layouts.
    void toggleLayout() override;
    void loadState() override;
    void saveState() const override;

    void themeChanged() override;

Q_SIGNALS:
    void currentCodeChanged(const QString &code);
    /// A row of the quote list was double-clicked: its instrument, the current one by then, is to be traded.
    void codeActivated(const QString &code);
    /// A click in the ladder as the event that it sent: 1127 a price type, 1128 a price, 1129 a volume, 1243 to cancel.
    void ladderClicked(int event, int first, int second, const QString &text);

private:
    struct Known
    {
        feed::Instrument instrument;
        std::optional<feed::QuoteSnapshot> quote;
        QElapsedTimer sinceQuote; ///< valid with a quote
    };
    void showCurrent();
    bool expectsQuotes() const;

    FeedPump &pump;
    QSplitter *columns;
    QSplitter *left;
    QSplitter *side;
    QuotePanel *quotes;
    LadderPanel *ladderPanel;
    PanelTabs *bottom;
    std::vector<Known> known; ///< by the feed's index
    QHash<QString, int> indexOfCode;
    int current = -1; ///< index; -1 for none
};

} // namespace terminal
