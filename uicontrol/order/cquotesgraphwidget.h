#pragma once

#include <QtCore/QBasicTimer>
#include <QtCore/QElapsedTimer>
#include <boost/shared_ptr.hpp>
#include <memory>

#include "kdservice/cinstrumentdetail.h"
#include "order/equotetype.h"
#include "order/quoteclickareas.h"
#include "order/quotelook.h"
#include "order/quoteslayout.h"
#include "order/quoteview.h"
#include "quoter/quoteralldata.h"
#include "uicontrolexport.h"
#include "zb/cbasewidget.h"
#include "zb/cnstategridimage.h"

namespace KV {

class CQuotesAccessible;

/// The painted price ladder: best levels of both sides, latest price, previous close and limits of one instrument.
///
/// Tells the host of clicks: 1129 (0, 0, volume) and 1128 (0, 0, price), the number as a text with four decimals; 1127
/// (0, an EPriceType); 1243 (level from 1, or 0 for all, 48 buying or 49 selling, stock code). With the keyboard, the
/// arrows, Home and End move a cursor over the levels and the buttons below them, Escape puts it away. Return takes the
/// level's price as a click does, the space bar its volume, Delete its orders where marks do; on a button both the
/// first press it.
///
/// GUI thread. Snapshots are kept alive while they are shown; however many come, each frame draws the last one.
class UICONTROL_API CQuotesGraphWidget : public ZB::CBaseWidget
{
    Q_OBJECT

public:
    explicit CQuotesGraphWidget(QWidget *parent = nullptr);
    ~CQuotesGraphWidget() override;

    /// What event 1243 carries. Another code than the present one takes all values away until the next snapshot.
    void setStockCode(const QString &code);
    /// Shows a snapshot; without one of both, no values. Neither may change from then on.
    void setQuoterAllData(boost::shared_ptr<quoter::QuoterAllData> quote,
                          boost::shared_ptr<kdservice::CInstrumentDetail> detail);
    /// A kdservice::EVxTraderType. TraderCredit and TraderStockOption have one level on each side, from the next
    /// snapshot on.
    void setTradeType(int type);
    /// An EQuoteType. Any other number paints nothing where the accounts have a choice of layouts.
    void setQuoteType(int type);
    /// Pending orders of both sides; the level-2 layouts show them.
    void setOrderNum(qint64 buying, qint64 selling);
    /// Shows the marks and buttons of event 1243.
    void setShowCancelOrder(bool show);
    /// A quote older than this many milliseconds turns grey and shows its age; 0, as at first, for never.
    void setSilenceLimit(int milliseconds);
    /// Whether the connection to the quotes is lost: they turn grey at once.
    void setFeedCut(bool cut);
    /// The shown quote was this many milliseconds old when it was given: what is stored does not come fresh. The next
    /// quote is new again.
    void setQuoteAge(qint64 milliseconds);
    bool isStale() const;
    /// Why the quote is out of date and for how long; empty while it is not.
    QString ageText() const;

    void setCanUseQuickOrder(bool can);
    /// Whether a click on a price is to be an order: kept for the host, which asks when event 1128 comes. Off where
    /// quick orders are not allowed, and from then on.
    void setQuickOrder(bool quick);
    bool isQuickOrder() const { return quickOrder; }
    /// While event 1129 is being delivered: whether the click ends a double-click.
    bool isDoubleClick() const { return doubleClick; }

    /// Where everything is for the present size, layout and look.
    QuotesLayout places() const;

    void themeChanged() override;
    void scaleChanged() override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void changeEvent(QEvent *event) override;
    void timerEvent(QTimerEvent *event) override;

private:
    friend class CQuotesAccessible;

    enum class Painter
    {
        None,
        Normal,
        Vertical,
        Horizontal
    };

    Painter painterKind() const;
    void draw(Painter kind);
    bool hasTwoLevelKinds() const;
    std::size_t levelCount() const;
    void takeLevels(std::vector<CQuoteData> &side, const std::array<double, 5> *prices,
                    const std::array<qint64, 5> *volumes) const;
    void updateWithFrame();
    std::optional<QPoint> pointer() const;
    void updateHand();
    qint64 quoteAge() const;
    void updateAge();
    /// False once a handler has destroyed the ladder.
    bool deliverVolume(double volume);
    bool deliverPrice(double price, const char *handler);
    bool deliverPriceType(int type, const char *handler);
    bool deliverCancel(const QuoteClickAreas::Cancel &cancel);

    void setFramed(bool framed);
    void setCursorLevel(const std::optional<QuoteCursor> &level);
    int buttonCount() const;
    std::vector<QuoteCursor> levelsWithPrice() const;
    std::optional<QuoteCursor> stepped(int direction) const;
    std::optional<QuoteCursor> beside(int direction) const;
    bool moveCursor(int key);
    bool takeAtCursor(int key);
    void pressButton(int button);

    int tradeType = 1;
    int quoteType = QuoteNormal;
    boost::shared_ptr<quoter::QuoterAllData> snapshot;
    boost::shared_ptr<kdservice::CInstrumentDetail> instrument;
    QuoteView view;
    int cachedWidth = 0;
    int cachedHeight = 0;
    QuoteLook look;
    QuotesMetrics metrics;
    QuoteClickAreas areas; ///< of the last paint
    bool showCancel = false;
    QString stockCode;
    bool doubleClick = false;
    bool quickOrder = false;
    bool canUseQuickOrder = false;
    ZB::CNStateGridImage digitImage;

    bool keyboardFocus = false; ///< the focus came by keyboard the last time, and no mouse since
    QElapsedTimer sincePaint;   ///< invalid before the first one
    QBasicTimer frameTimer;     ///< runs until a snapshot that came too soon after a paint may be painted
    std::optional<QuoteCursor> cursorLevel;
    QElapsedTimer sinceSnapshot; ///< invalid before the first one
    qint64 ageWhenGiven = 0;     ///< milliseconds
    int silenceLimit = 0;        ///< milliseconds; 0 for none
    bool feedCut = false;
    QBasicTimer ageTimer;
};

} // namespace KV
