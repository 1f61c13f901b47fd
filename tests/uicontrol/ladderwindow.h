#pragma once

#include <QtCore/QStringList>
#include <QtGui/QImage>
#include <boost/shared_ptr.hpp>
#include <functional>

#include "order/cquotesgraphwidget.h"
#include "order/cquotespriceslist.h"

/// A ladder in a window of its own, used with mouse, keys and eyes. What is delivered to the window is written down.
class LadderWindow : public ZB::CBaseWidget
{
public:
    explicit LadderWindow(KV::EQuoteType layout = KV::QuoteNormal,
                          kdservice::EVxTraderType trader = kdservice::TraderStock);

    bool handleEvent(int event, int first, int second, QString text, void *data) override;

    void give(const quoter::QuoterAllData &quote);
    void giveNothing() { list->setQuoterAllData(nullptr, nullptr); }
    /// Paints what has changed.
    void settle();
    void click(const QPoint &point, Qt::MouseButton button = Qt::LeftButton);
    /// Moves the pointer to a point of the ladder. It is beside the window at first.
    void move(const QPoint &point);
    void press(int key);
    QString takeEvents();
    QImage picture();
    KV::QuotesLayout places();

    KV::CQuotesPricesList *list;
    KV::CQuotesGraphWidget *graph;
    std::function<void(int event)> whenTold;                ///< called with each event; may be empty
    boost::shared_ptr<kdservice::CInstrumentDetail> detail; ///< limits 11.00 and 9.00, tick 0.01

private:
    QStringList events; ///< "event first second text"
};

/// Last 10.05, previous close 10.00; asks 10.06, 10.07 ... with 100, 200 ..., bids 10.05, 10.04 ... with 1000, 900 ...
quoter::QuoterAllData plainQuote();
