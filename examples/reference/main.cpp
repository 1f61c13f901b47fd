// A table of orders over the reference host as it is, built without CMake:
//   g++ -std=c++17 -fPIC main.cpp $(pkg-config --cflags --libs uicontrol uicontrol-framework uicontrol-refhost)
// With --check it shows the table for a moment only and tells whether it holds what it should.

#include <QtCore/QTextStream>
#include <QtCore/QTimer>
#include <QtWidgets/QApplication>

#include "model/chpfdatamodel.h"
#include "records/record.h"
#include "services/userconfig.h"
#include "table/chpfdatatable.h"

namespace {

constexpr int tableId = 1; ///< the user's settings for the table are kept under it

int check(const KV::CHpfDataTable &table)
{
    const auto first = table.getData(0);
    const QString price = first ? first->getDisplayQString(table.getColumnIdByFileId(refhost::OrderPrice)) : QString();
    QTextStream(stdout) << table.getAllDatas().size() << " rows, price: " << price << '\n';
    return table.getAllDatas().size() == 1 && price == QLatin1String("1,688.00") ? 0 : 1;
}

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    refhost::setUserConfig(std::make_unique<refhost::UserConfig>());
    int result = 0;
    {
        KV::CHpfDataTable table(tableId, refhost::MetaOwnOrder, nullptr, kdservice::TraderStock, false);
        table.resize(600, 400);
        const auto order = refhost::makeOrder(refhost::MetaOwnOrder, "order-1");
        order->setData(refhost::OrderCode, std::string("600519.SH"));
        order->setData(refhost::OrderPrice, 1688.0);
        table.updateData(order, false);
        table.show();
        if (application.arguments().contains(QStringLiteral("--check")))
            QTimer::singleShot(200, [&] { QApplication::exit(check(table)); });
        result = QApplication::exec();
    }
    refhost::setUserConfig(nullptr);
    return result;
}
