#include <gtest/gtest.h>

#include <QtCore/QEventLoop>
#include <QtCore/QTimer>
#include <QtWidgets/QVBoxLayout>
#include <QtWidgets/QWidget>

#include "model/chpfdatamodel.h"
#include "records/fieldids.h"
#include "services/userconfig.h"
#include "table/cdatatable.h"
#include "table/chpfdatatable.h"

extern void (*const recipes[])(QWidget *);
extern const int recipeCount;

namespace {

void runEventsFor(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

} // namespace

TEST(Cookbook, EveryRecipeRunsInAShownWindow)
{
    refhost::setUserConfig(std::make_unique<refhost::UserConfig>());
    ASSERT_EQ(recipeCount, 11);
    std::string rows;
    for (int number = 0; number < recipeCount; ++number) {
        QWidget window;
        window.resize(800, 600);
        window.setLayout(new QVBoxLayout);
        recipes[number](&window);
        for (QObject *child : window.children())
            if (auto *widget = qobject_cast<QWidget *>(child))
                window.layout()->addWidget(widget);
        window.show();
        runEventsFor(50);
        ASSERT_GT(window.layout()->count(), 0) << "recipe " << number + 1 << " shows nothing";
        for (const auto *table : window.findChildren<KV::CHpfDataTable *>())
            rows += std::to_string(number + 1) + ":" + std::to_string(table->getAllDatas().size()) + " ";
        for (auto *table : window.findChildren<KV::CDataTable *>())
            rows += std::to_string(number + 1) + ":" +
                    table->cellText(0, table->fieldID2columnID(refhost::PositionLastPrice)).toStdString() + " ";
    }
    EXPECT_EQ(rows, "1:1 2:1000 3:1 4:0 5:1 6:1 7:0 7:0 8:0 11:1,690.50 ");
    refhost::setUserConfig(nullptr);
}
