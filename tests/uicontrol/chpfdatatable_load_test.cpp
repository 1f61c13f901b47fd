// What a table shows of a bulk load, and how its user stops it.

#include <gtest/gtest.h>

#include <QtCore/QElapsedTimer>
#include <QtTest/QTest>
#include <QtWidgets/QPushButton>

#include "modelstrand.h"
#include "popups/taskstrip.h"
#include "tablewindow.h"

using namespace testrecords;

namespace {

constexpr int batch = 100000;
constexpr int halfWay = 50000;

class HpfDataTableLoad : public TableWindow
{
protected:
    HpfDataTableLoad() : strip(grid()->findChildren<ZB::TaskStrip *>().first()) // the first until one is raised
    {
        table->setDataModel(model.pointer().get());
    }

    /// Until the load stands still in the middle and the table says so.
    void showLoad(int first)
    {
        model->haltAt('T' + std::to_string(first + halfWay));
        model->addDatas(tickets(first, batch));
        EXPECT_TRUE(QTest::qWaitFor([this] { return strip->isVisible() && strip->progress() > 500; }, 60000));
        model->waitUntilHalted();
    }
    bool stripGoes()
    {
        return QTest::qWaitFor([this] { return !strip->isVisible(); }, 60000);
    }

    ZB::TaskStrip *const strip;
    const Guarded<HaltingModel> model;
};

} // namespace

TEST_F(HpfDataTableLoad, TheStripTellsOfALoadAndGoesWithItsEnd)
{
    HeldStrand held;
    QElapsedTimer clock;
    clock.start();
    model->addDatas(tickets(0, 100));
    EXPECT_EQ(table->workProgress(), 0);
    EXPECT_TRUE(QTest::qWaitFor([this] { return strip->isVisible(); }, 60000));
    EXPECT_GE(clock.elapsed(), 250) << "what is quick is not shown";
    EXPECT_EQ(strip->taskText(), QStringLiteral("正在载入"));
    held.go();
    EXPECT_TRUE(stripGoes());
    EXPECT_EQ(table->workProgress(), 1000);
    EXPECT_EQ(table->count(), 100);
}

TEST_F(HpfDataTableLoad, EscapeEndsItAndTheNextBatchIsLoadedWhole)
{
    showLoad(0);
    QTest::keyClick(grid(), Qt::Key_Escape);
    EXPECT_FALSE(strip->isVisible());
    model->goOn();
    finishStrand();
    const int in = model->allSize();
    EXPECT_GT(in, halfWay);
    EXPECT_LT(in, batch);

    model->addDatas(tickets(batch, 1000));
    finishStrand();
    EXPECT_EQ(model->allSize(), in + 1000);
    settle();
    EXPECT_EQ(grid()->source()->rowCount(), in + 1000);
}

TEST_F(HpfDataTableLoad, TheButtonEndsItAndASortThatWaitsBehindItIsCarriedOut)
{
    showLoad(0);
    table->setSortColumns({{ColumnLots, 1}});
    EXPECT_EQ(strip->taskText(), QStringLiteral("正在载入"));
    strip->findChild<QPushButton *>()->click();
    EXPECT_EQ(model->loadProgress(), 1000);
    model->goOn();
    finishStrand();
    EXPECT_LT(model->allSize(), batch);
    EXPECT_EQ(model->sortColumns(), (QVector<QPair<int, int>>{{ColumnLots, 1}}));
    EXPECT_TRUE(stripGoes());
    EXPECT_EQ(table->getData(0)->getInt(ColumnLots), model->allSize() - 1);
}

TEST_F(HpfDataTableLoad, ATableThatGoesEndsTheLoadOfItsModel)
{
    model->haltAt("T5000");
    model->addDatas(tickets(0, 20000));
    model->addDatas(tickets(20000, 10));
    model->waitUntilHalted();
    window.reset();
    model->addDatas(tickets(30000, 10)); // somebody else goes on with the model
    model->goOn();
    finishStrand();
    EXPECT_EQ(model->allSize(), 10);
}

TEST_F(HpfDataTableLoad, ALoadThatIsNotToBeSeenIsNotStoppedEither)
{
    HeldStrand held;
    model->addDatas(tickets(0, 100));
    table->setLoadsShown(false);
    EXPECT_EQ(table->workProgress(), 1000);
    table->cancelWork();
    held.go();
    finishStrand();
    EXPECT_EQ(table->count(), 100);
}

TEST_F(HpfDataTableLoad, LoadsThatAreQuickAreNotShownThoughTheTableFindsOneAtEachLook)
{
    HeldStrand held;
    QElapsedTimer clock;
    clock.start();
    bool shown = false;
    for (int number = 0; clock.elapsed() < 1200; ++number) {
        model->addDatas(tickets(number, 1));
        QTest::qWait(50);
        shown = shown || strip->isVisible();
        model->cancelLoad(); // its end; the next one is there before the table looks again
    }
    EXPECT_FALSE(shown);
    model->addDatas(tickets(0, 1));
    EXPECT_TRUE(QTest::qWaitFor([this] { return strip->isVisible(); }, 60000));
    held.go();
    finishStrand();
}
