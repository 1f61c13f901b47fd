#include "uicontrol/ladderwindow.h"

#include <QtGui/QCursor>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <boost/smart_ptr/make_shared.hpp>

LadderWindow::LadderWindow(KV::EQuoteType layout, kdservice::EVxTraderType trader)
    : list(new KV::CQuotesPricesList(KV::OpParamQuotes, this)), graph(list->findChild<KV::CQuotesGraphWidget *>()),
      detail(boost::make_shared<kdservice::CInstrumentDetail>())
{
    detail->upperLimitPrice = 11.00;
    detail->lowerLimitPrice = 9.00;
    detail->priceTick = 0.01;
    list->setTradeType(trader);
    list->setQuoteType(layout);
    list->setStockCode(QStringLiteral("600519.SH"));
    resize(list->size());
    show();
    QCursor::setPos(geometry().bottomRight() + QPoint(50, 50));
    [[maybe_unused]] const bool exposed = QTest::qWaitForWindowExposed(this);
    QApplication::setActiveWindow(this);
    graph->setFocus();
    settle();
}

bool LadderWindow::handleEvent(int event, int first, int second, QString text, void *pointer)
{
    if (whenTold)
        whenTold(event);
    events << QStringLiteral("%1 %2 %3 %4%5").arg(event).arg(first).arg(second).arg(text, pointer ? "!" : "");
    return true;
}

void LadderWindow::give(const quoter::QuoterAllData &quote)
{
    list->setQuoterAllData(boost::make_shared<quoter::QuoterAllData>(quote), detail);
    settle();
}

void LadderWindow::settle()
{
    QApplication::sendPostedEvents();
    graph->repaint();
}

void LadderWindow::click(const QPoint &point, Qt::MouseButton button)
{
    QTest::mouseClick(graph, button, Qt::NoModifier, point);
}

void LadderWindow::move(const QPoint &point)
{
    QTest::mouseMove(graph, point);
    settle();
}

void LadderWindow::press(int key)
{
    QTest::keyClick(graph, static_cast<Qt::Key>(key));
}

QString LadderWindow::takeEvents()
{
    return std::exchange(events, {}).join(QLatin1String(" | "));
}

QImage LadderWindow::picture()
{
    return graph->grab().toImage().convertToFormat(QImage::Format_RGB32);
}

KV::QuotesLayout LadderWindow::places()
{
    return graph->places();
}

quoter::QuoterAllData plainQuote()
{
    quoter::QuoterAllData quote;
    quote.latestPrice = 10.05;
    quote.previousClose = 10.00;
    for (std::size_t i = 0; i < 5; ++i) {
        quote.askPrices[i] = 10.06 + 0.01 * static_cast<double>(i);
        quote.bidPrices[i] = 10.05 - 0.01 * static_cast<double>(i);
        quote.askVolumes[i] = 100 * (static_cast<qint64>(i) + 1);
        quote.bidVolumes[i] = 1000 - 100 * static_cast<qint64>(i);
    }
    return quote;
}
