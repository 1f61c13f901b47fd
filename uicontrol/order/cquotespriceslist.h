#pragma once

#include <QtCore/QPointer>
#include <boost/shared_ptr.hpp>

#include "kdservice/cinstrumentdetail.h"
#include "kdservice/eoperationtype.h"
#include "kdservice/evxtradertype.h"
#include "kv/cselectcodewidget.h"
#include "kv/eopparamwidgetid.h"
#include "order/equotetype.h"
#include "quoter/quoteralldata.h"
#include "uicontrolexport.h"
#include "zb/cwidgetlist.h"

namespace KV {

class CQuotesGraphWidget;

/// The price ladder of an order form: the painted quote, and above it the code selector that the form attaches. It has
/// a fixed size, which the theme, the account kind and the layout decide. Clicks on the quote reach the form as events
/// of the painted ladder. GUI thread.
class UICONTROL_API CQuotesPricesList : public ZB::CWidgetList
{
    Q_OBJECT

public:
    /// The id changes nothing about the ladder.
    explicit CQuotesPricesList(EOpParamWidgetID id, QWidget *parent = nullptr);
    ~CQuotesPricesList() override;

    /// Puts a code selector above the quote, in place of the one there, which is hidden; null for none. It gets the
    /// present trade type. It may be destroyed at any time; its room goes with the next turn of the event loop.
    void setSelectCodeWidget(CSelectCodeWidget *widget);
    CSelectCodeWidget *getSelectCodeWidget() const;
    /// The selector's code, not the one of setStockCode(); empty without a selector.
    QString getStockCode() const;
    /// Starts the entry of a code with what was typed over the quote. Nothing without a selector.
    void inputStockCodeChar(QString text);
    /// Starts it with the keyboard in the selector's line edit and all of its text selected.
    void setCodeEditFocus();

    /// The instrument whose quotes are to come; takes the values of another one away. The selector keeps the code that
    /// it shows.
    void setStockCode(QString code);
    void setTradeType(kdservice::EVxTraderType type);
    void setQuoteType(EQuoteType type);
    EQuoteType getQuoteType() const { return quoteType; }
    void setQuoterAllData(boost::shared_ptr<quoter::QuoterAllData> quote,
                          boost::shared_ptr<kdservice::CInstrumentDetail> detail);

    /// @name The painted ladder's; CQuotesGraphWidget tells more
    /// @{
    void setOrderNum(qint64 buying, qint64 selling);
    void setShowCancelOrder(bool show);
    void setCanUseQuickOrder(bool can);
    void setQuickOrder(bool quick);
    bool isQuickOrder() const;
    /// @}

    /// @name The selector's; the first two do nothing without one
    /// @{
    void setDrawTop(bool drawTop);
    void setOperationType(kdservice::EOperationType type);
    /// There must be a code selector: a debug build stops without one, any other does nothing.
    void setTradeOpType(quint64 type);
    /// @}
    /// A disabled quote is grey and takes no click.
    void setUiEnabled(bool selectorEnabled, bool quoteEnabled);

    /// A quote older than this many milliseconds turns grey and shows its age; 0, as at first, for never.
    void setSilenceLimit(int milliseconds);
    /// How many milliseconds old the quote was that was given last, when it was not new.
    void setQuoteAge(qint64 milliseconds);
    /// Whether the connection to the quotes is lost.
    void setFeedCut(bool cut);

    void themeChanged() override;
    void scaleChanged() override;
    /// Takes the size that the theme gives for the layout; no wider than the layout has use for.
    void resizeLayout();

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void handOnTradeType();

    QPointer<CSelectCodeWidget> selector;
    CQuotesGraphWidget *graph;
    int tradeType = kdservice::TraderStock;
    EQuoteType quoteType = QuoteNormal;
    bool showCancel = false;
};

} // namespace KV
