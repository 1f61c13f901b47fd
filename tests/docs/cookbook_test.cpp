#include <gtest/gtest.h>

#include <QtCore/QEventLoop>
#include <QtCore/QTimer>
#include <QtWidgets/QVBoxLayout>
#include <QtWidgets/QWidget>

#include "model/chpfdatamodel.h"
#include "services/userconfig.h"
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
    ASSERT_EQ(recipeCount, 10);
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
    }
    EXPECT_EQ(rows, "1:1 2:1000 3:1 4:0 5:1 6:1 7:0 7:0 8:0 ");
    refhost::setUserConfig(nullptr);
}
