// A desk that trades at random until it is killed. Says on the standard output what it has told its user, one line at a
// time: "order NUMBER PRICE QUANTITY ACCOUNT STATUS FILLED CANCELLED" and "deal NUMBER ORDER PRICE QUANTITY AMOUNT".
// Arguments: desk file, seed, trading day.

#include <QtCore/QCoreApplication>
#include <QtCore/QTimer>
#include <cstdio>

#include "trading/desk.h"
#include "trading_random.h"

using namespace tradingtest;

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 4)
        return 2;
    trading::Desk desk;
    const QString problem = desk.open(arguments[1]);
    if (!problem.isEmpty()) {
        std::fprintf(stderr, "%s\n", qPrintable(problem));
        return 2;
    }
    QObject::connect(&desk, &trading::Desk::changed, [](const trading::DeskChange &change) {
        for (const trading::PaperOrder &order : change.orders)
            std::printf("order %lld %lld %lld %s %d %lld %lld\n", order.id, order.price, order.quantity,
                        order.account.c_str(), int(order.status), order.filled.quantity, order.cancelled);
        for (const trading::PaperDeal &deal : change.deals)
            std::printf("deal %lld %lld %lld %lld %lld\n", deal.id, deal.order, deal.price, deal.quantity, deal.amount);
        std::fflush(stdout);
    });
    RandomTrading market(arguments[2].toUInt());
    desk.openAccount(stockAccount());
    desk.openAccount(futureAccount());
    for (const feed::Instrument &instrument : market.instruments)
        desk.takeInstrument(instrument);

    const int day = arguments[3].toInt();
    int second = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        second = std::min(second + 1, 7000);
        const qint64 time = at(day, 9 + (1800 + second) / 3600, (30 + second / 60) % 60, second % 60);
        desk.takeQuote(market.nextQuote(time));
        desk.takeDeal(market.nextDeal(time));
        desk.submit(market.nextRequest());
        if (!desk.broker().orders().empty() && market.below(2) == 0)
            desk.cancel(desk.broker().orders().rbegin()->first - market.below(20));
    });
    timer.start(0);
    return QCoreApplication::exec();
}
