// The smallest program that shows a table of its own records: sums, sorting, filters and export come with it.
// With --check it shows the table for a moment only and tells whether it holds what it should.

#include <QtCore/QTextStream>
#include <QtCore/QTimer>
#include <QtWidgets/QApplication>
#include <boost/make_shared.hpp>

#include "model/chpfdatamodel.h"
#include "table/chpfdatatable.h"
#include "trade.h"

namespace {

constexpr int tableId = 1; ///< the user's settings for the table are kept under it
constexpr int tradeCount = 1000;

boost::shared_ptr<kdservice::IData> trade(int number)
{
    return boost::make_shared<Trade>("trade-" + std::to_string(number), number % 2 ? "600000.SH" : "000001.SZ",
                                     10.0 + 0.01 * number, 100 * number);
}

int check(const KV::CHpfDataTable &table)
{
    const auto first = table.getData(0);
    const QString sum = table.getDataModel()->getStatDispalyQString(2);
    QTextStream(stdout) << table.getAllDatas().size()
                        << " rows, first: " << (first ? first->getDisplayQString(1) : QString()) << ", sum: " << sum
                        << '\n';
    return table.getAllDatas().size() == tradeCount && first && first->getDisplayQString(1) == QLatin1String("20.00") &&
                   !sum.isEmpty()
               ? 0
               : 1;
}

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    KV::CHpfDataTable table(tableId, Trade::metaId, nullptr, kdservice::TraderStock, false);
    table.resize(600, 400);

    std::vector<boost::shared_ptr<kdservice::IData>> trades;
    for (int number = 1; number <= tradeCount; ++number)
        trades.push_back(trade(number));
    table.updateDatas(trades, false);
    table.setSortColumns({{1, 1}}); // the highest price first
    table.show();

    if (!application.arguments().contains(QStringLiteral("--check")))
        return QApplication::exec();
    int result = 1;
    QTimer::singleShot(200, [&] {
        result = check(table);
        QApplication::quit();
    });
    QApplication::exec();
    return result;
}
