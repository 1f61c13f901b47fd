#pragma once

#include <vector>

#include "feed/marketdata.h"
#include "order/equotetype.h"
#include "window/panel.h"

class QScrollArea;

namespace KV {
class CQuotesPricesList;
}

namespace terminal {

class BarButton;
class LadderHeader;

/// The price ladder of one instrument, with its name and code and a choice of the three layouts. As wide as the layout
/// is; a ladder that is too high for the panel scrolls.
class LadderPanel : public Panel
{
    Q_OBJECT

public:
    explicit LadderPanel(QWidget *parent = nullptr);
    ~LadderPanel() override;

    KV::CQuotesPricesList &ladder() const { return *list; }
    const LadderHeader &header() const { return *title; }

    /// Takes the values of another instrument away.
    void setInstrument(const feed::Instrument &instrument);
    /// Of the instrument that is shown; `age` milliseconds old.
    void setQuote(const feed::QuoteSnapshot &quote, qint64 age);
    /// Whether quotes are to be expected at present: only then silence is told.
    /// The price of a level, from 1, as the user saw it last; absent where there was none.
    double shownPrice(int level, int side) const;
    void setQuotesExpected(bool expected);

    /// Whether each level has a mark that withdraws what stands there, in the layouts that have room for it.
    void setCancelsShown(bool shown);

    /// Futures have the ordinary layout only; the choice comes back with the next stock.
    void setLayoutKind(KV::EQuoteType kind);
    KV::EQuoteType layoutKind() const { return kind; }
    /// Goes to the next layout.
    void toggleLayoutKind();

    void themeChanged() override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void addKindButtons();
    void applyLook();
    void fitWidth();

    struct KindButton
    {
        KV::EQuoteType kind;
        BarButton *button;
    };
    LadderHeader *title;
    QScrollArea *scroll;
    KV::CQuotesPricesList *list;
    QWidget *graph;
    std::vector<KindButton> kindButtons;
    QColor background;
    feed::Instrument instrument;
    KV::EQuoteType kind = KV::QuoteNormal;
    bool showsCancels = false;
    feed::QuoteSnapshot latest;
    feed::QuoteSnapshot painted; ///< what the user sees, and clicks on
};

} // namespace terminal
