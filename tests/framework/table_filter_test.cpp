#include <QtTest/QTest>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>
#include <QtWidgets/QPushButton>

#include "framework/tablefixture.h"
#include "popups/checklist.h"
#include "popups/filterpopup.h"
#include "table/hpfmodelaccess.h"

namespace tabletest {

namespace {

class TableFilterTest : public TableTest
{
protected:
    /// By keyboard, as the funnel of the header does.
    ZB::FilterPopup *openFilter(int column)
    {
        clickCell(0, column);
        QTest::keyClick(grid(), Qt::Key_Down, Qt::AltModifier);
        auto *box = popup<ZB::FilterPopup>();
        constexpr int longEnough = 60000; // for 100,000 values under a sanitizer, on a busy machine
        EXPECT_TRUE(box && QTest::qWaitFor([box] { return box->isGathered(); }, longEnough));
        return box;
    }

    /// Also where no row is shown.
    ZB::FilterPopup *openFilterAnywhere(int column)
    {
        Q_EMIT grid()->filterRequested(column, grid()->headerRect(column));
        auto *box = popup<ZB::FilterPopup>();
        EXPECT_TRUE(box && QTest::qWaitFor([box] { return box->isGathered(); }));
        return box;
    }

    static QString choices(const ZB::FilterPopup *box)
    {
        QStringList lines;
        for (const ZB::CheckItem &item : box->findChild<ZB::CheckList *>()->items())
            lines.append(QStringLiteral("%1%2 %3").arg(item.checked ? "x " : "  ", item.text, item.note));
        return lines.join(QLatin1Char('\n'));
    }

    static QPushButton *button(const QWidget *box, const QString &text)
    {
        for (QPushButton *each : box->findChildren<QPushButton *>())
            if (each->text() == text)
                return each;
        return nullptr;
    }

    static QLineEdit *field(const QWidget *box, const QString &hint)
    {
        for (QLineEdit *each : box->findChildren<QLineEdit *>())
            if (each->accessibleName().contains(hint))
                return each;
        return nullptr;
    }

    void closePopups()
    {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        window->activateWindow();
        grid()->setFocus();
        settle();
    }

    int rowCount() const
    {
        settle();
        return int(grid()->source()->rowCount());
    }
};

TEST_F(TableFilterTest, TheBoxIsAsHighAsItsTextsNeed)
{
    const auto lines = [this](int column) {
        ZB::FilterPopup *box = openFilter(column);
        const auto *list = box->findChild<ZB::CheckList *>();
        EXPECT_EQ(box->height(), box->sizeHint().height());
        EXPECT_EQ(box->pos(), grid()->mapToGlobal(grid()->headerRect(column).bottomLeft()) + QPoint(0, 1));
        const int height = list->viewport()->height() / list->lineHeight();
        box->close();
        closePopups();
        return height;
    };
    EXPECT_EQ(lines(Side), 3) << "two texts";
    EXPECT_EQ(lines(Code), 4);
    for (int i = 0; i < 20; ++i)
        model->put({"n" + std::to_string(i), QString::number(600100 + i), "浦发银行", 0, 1.5, 100});
    settle();
    EXPECT_EQ(lines(Code), 10) << "and a scroll bar";
}

TEST_F(TableFilterTest, TheBoxOffersDistinctTextsWithCountsAndAppliesWhatIsChecked)
{
    ZB::FilterPopup *box = openFilter(Code);
    EXPECT_EQ(choices(box), QStringLiteral("x 000001 1\nx 300918 1\nx 600000 2\nx 688293 1"));
    auto *list = box->findChild<ZB::CheckList *>();
    QTest::keyClick(list, Qt::Key_Home);
    QTest::keyClick(list, Qt::Key_Space);
    QTest::keyClick(list, Qt::Key_Down);
    QTest::keyClick(list, Qt::Key_Space);
    QTest::keyClick(list, Qt::Key_Return);
    closePopups();
    EXPECT_EQ(shown(), QStringLiteral("代码* 名称 方向 价格 数量\n"
                                      "> 600000 浦发银行 买入 10.25 300\n"
                                      "600000 浦发银行 卖出 - 700\n"
                                      "688293 =奥浦迈 买入 98.70 50"));
    EXPECT_FALSE(popup<ZB::FilterPopup>());

    // Another column offers what the first filter leaves; the filtered column still offers everything.
    box = openFilter(Side);
    EXPECT_EQ(choices(box), QStringLiteral("x 买入 2\nx 卖出 1"));
    box = openFilter(Code);
    EXPECT_EQ(choices(box), QStringLiteral("  000001 1\n  300918 1\nx 600000 2\nx 688293 1"));
    QTest::mouseClick(button(box, QStringLiteral("清除筛选")), Qt::LeftButton);
    closePopups();
    EXPECT_EQ(rowCount(), 5);
    EXPECT_TRUE(model->columnFilters().isEmpty());
}

TEST_F(TableFilterTest, AllNoneAndInvertActOnWhatTheSearchLeaves)
{
    ZB::FilterPopup *box = openFilter(Code);
    QTest::keyClicks(field(box, QStringLiteral("搜索取值")), QStringLiteral("00"));
    EXPECT_EQ(box->findChild<ZB::CheckList *>()->shownItems().size(), 3u);
    QTest::mouseClick(button(box, QStringLiteral("全不选")), Qt::LeftButton);
    EXPECT_FALSE(button(box, QStringLiteral("确定"))->isEnabled());
    QTest::keyClicks(field(box, QStringLiteral("搜索取值")), QStringLiteral("0001"));
    QTest::mouseClick(button(box, QStringLiteral("反选")), Qt::LeftButton);
    EXPECT_EQ(choices(box), QStringLiteral("x 000001 1\n  300918 1\n  600000 2\nx 688293 1"));
    QTest::mouseClick(button(box, QStringLiteral("确定")), Qt::LeftButton);
    closePopups();
    EXPECT_EQ(model->columnFilters().value(Code).value(0).second, QSet<QString>({"000001"}));

    box = openFilter(Code);
    QTest::mouseClick(button(box, QStringLiteral("全选")), Qt::LeftButton);
    QTest::keyClick(box, Qt::Key_Return);
    closePopups();
    EXPECT_TRUE(model->columnFilters().isEmpty());
}

TEST_F(TableFilterTest, AContainedTextFiltersToo)
{
    ZB::FilterPopup *box = openFilter(Name);
    field(box, QStringLiteral("包含"))->setText(QStringLiteral("平安 南山"));
    QTest::keyClick(box, Qt::Key_Return);
    closePopups();
    const auto filter = model->columnFilters().value(Name).value(0);
    EXPECT_EQ(filter.first, ZB::FilterContains);
    EXPECT_EQ(filter.second, QSet<QString>({QStringLiteral("平安"), QStringLiteral("南山")}));
    EXPECT_EQ(rowCount(), 2);
    box = openFilter(Name);
    EXPECT_EQ(field(box, QStringLiteral("包含"))->text().split(QLatin1Char(' ')).size(), 2);
    QTest::keyClick(box, Qt::Key_Escape);
    closePopups();
    EXPECT_EQ(rowCount(), 2);
    QTest::keyClick(grid(), Qt::Key_L, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(rowCount(), 5);
}

TEST_F(TableFilterTest, AValueThatNoRowHasAnyMoreStaysOffered)
{
    QSet<QString> values{QStringLiteral("600000"), QStringLiteral("601318")};
    table->onFilterTrigger(Code, ZB::FilterExact, values);
    EXPECT_EQ(choices(openFilter(Code)), QStringLiteral("  000001 1\n  300918 1\nx 600000 2\n  688293 1\nx 601318 0"));
}

TEST_F(TableFilterTest, OnlyFilterableColumnsAndKnownTypesFilter)
{
    table->setColumnFilterable(Code, false);
    QSet<QString> values{QStringLiteral("600000")};
    table->onFilterTrigger(Code, ZB::FilterExact, values);
    table->onFilterTrigger(Name, 7, values);
    table->onFilterTrigger(-1, ZB::FilterExact, values);
    table->onFilterTrigger(99, ZB::FilterExact, values);
    EXPECT_TRUE(model->columnFilters().isEmpty());
    clickCell(0, Code);
    QTest::keyClick(grid(), Qt::Key_Down, Qt::AltModifier);
    EXPECT_FALSE(popup<ZB::FilterPopup>());
    EXPECT_FALSE(table->columnFilterable(99));
}

TEST_F(TableFilterTest, TheMenuFiltersByTheValueUnderTheCursor)
{
    clickCell(2, Name);
    Q_EMIT grid()->contextMenuRequested(grid()->currentRow(), Name, QPoint());
    const auto *menu = popup<QMenu>();
    ASSERT_TRUE(menu);
    for (QAction *action : menu->actions())
        if (action->text() == QStringLiteral("只看“南山智尚”"))
            action->trigger();
    EXPECT_EQ(rowCount(), 1);
}

TEST_F(TableFilterTest, TakingTheModelAwayClosesTheBox)
{
    openFilter(Code);
    table->setDataModel(nullptr);
    closePopups();
    EXPECT_FALSE(popup<ZB::FilterPopup>());
    EXPECT_EQ(grid()->source()->rowCount(), 0);
}

TEST_F(TableFilterTest, AChoiceMayTakeTheModelAway)
{
    ZB::FilterPopup *box = openFilter(Code);
    QObject::connect(box, &ZB::FilterPopup::chosen, table, [this] { table->setDataModel(nullptr); });
    QTest::keyClick(box->findChild<ZB::CheckList *>(), Qt::Key_Space);
    QTest::keyClick(box, Qt::Key_Return);
    closePopups();
    EXPECT_FALSE(popup<ZB::FilterPopup>());
    EXPECT_EQ(grid()->source()->rowCount(), 0);
}

TEST_F(TableFilterTest, ABoxOverAnyConditionsChangesNothingWhenItIsLeftAsItIs)
{
    const auto exact = ZB::FilterExact;
    const auto contains = ZB::FilterContains;
    const auto except = ZB::FilterExcept;
    const ZB::FilterConditions all[] = {
        {{exact, {"600000", "601318"}}},
        {{exact, {"600000", "000001"}}, {exact, {"000001"}}},
        {{exact, {"600000"}}, {exact, {"000001"}}},
        {{exact, {"600000", "000001"}}, {contains, {"60"}}},
        {{exact, {"600000", "000001"}}, {except, {"600000"}}},
        {{contains, {"60", "68"}}},
        {{contains, {"60 68", "0 1"}}},
        {{contains, {"", "60"}}},
        {{contains, {""}}},
        {{contains, {"6"}}, {contains, {"0"}}},
        {{contains, {"6", "3"}}, {except, {"688293"}}},
        {{contains, {"6", "3"}}, {contains, {"0"}}, {except, {"688293", "601318"}}},
        {{except, {"600000"}}},
        {{except, {"600000"}}, {except, {"000001", "601318"}}},
    };
    ZB::FilterCondition name(ZB::FilterExact, {QStringLiteral("浦发银行")}); // leaves nothing else to choose
    for (int number = 0; number < 2 * int(std::size(all)); ++number) {
        model->clearFilter();
        for (ZB::FilterCondition condition : all[number / 2])
            model->filterColumnCombin(Code, condition);
        if (number % 2 == 1)
            model->filterColumnCombin(Name, name);
        settle();
        const auto filters = model->columnFilters();
        const QString rows = shown();
        const quint64 changes = model->changeCount();
        ZB::FilterPopup *box = openFilterAnywhere(Code);
        QTest::keyClick(box, Qt::Key_Return);
        closePopups();
        EXPECT_FALSE(popup<ZB::FilterPopup>());
        EXPECT_EQ(model->columnFilters(), filters);
        EXPECT_EQ(shown(), rows);
        EXPECT_EQ(model->changeCount(), changes);
    }
}

TEST_F(TableFilterTest, ConditionsThatTheBoxCannotShowAreToldInWordsAndReplacedByAChoice)
{
    ZB::FilterCondition six(ZB::FilterContains, {"6"});
    ZB::FilterCondition zero(ZB::FilterContains, {"0", "z"});
    ZB::FilterCondition others(ZB::FilterExcept, {"601318"});
    for (ZB::FilterCondition *condition : {&six, &zero, &others})
        model->filterColumnCombin(Code, *condition);
    ZB::FilterPopup *box = openFilter(Code);
    QString told;
    for (const QLabel *label : box->findChildren<QLabel *>())
        if (label->text().contains(QStringLiteral("现有条件")))
            told = label->text();
    EXPECT_EQ(told, QStringLiteral("现有条件：包含“6”，且包含“0”或“z”，且不是“601318”。改选后由新的选择代替。"));
    EXPECT_EQ(choices(box), QStringLiteral("  000001 1\n  300918 1\nx 600000 2\n  688293 1\n  601318 0"));
    EXPECT_TRUE(button(box, QStringLiteral("清除筛选"))->isEnabled());
    auto *list = box->findChild<ZB::CheckList *>();
    QTest::keyClick(list, Qt::Key_Home);
    QTest::keyClick(list, Qt::Key_Space);
    QTest::keyClick(list, Qt::Key_Return);
    closePopups();
    EXPECT_EQ(model->columnFilters().value(Code), (ZB::FilterConditions{{ZB::FilterExact, {"000001", "600000"}}}));
}

TEST_F(TableFilterTest, MoreValuesThanAreListedAreChosenByALineOfTheirOwn)
{
    constexpr int listed = ZB::HpfDistinctTexts::maximumValues;
    constexpr int rows = listed + 10;
    model = boost::make_shared<OrderModel>();
    for (int row = 0; row < rows; ++row)
        model->put({std::to_string(row), QString::number(row), QString(), 0, 1.0, row});
    rebuild(model);
    const auto press = [this](auto choose) {
        grid()->scrollToRow(0);
        settle();
        ZB::FilterPopup *box = openFilter(Code);
        choose(box->findChild<ZB::CheckList *>());
        QTest::keyClick(box, Qt::Key_Return);
        closePopups();
        EXPECT_FALSE(popup<ZB::FilterPopup>());
    };
    const auto toggle = [](ZB::CheckList *list, Qt::Key key) {
        QTest::keyClick(list, key);
        QTest::keyClick(list, Qt::Key_Space);
    };
    press([](ZB::CheckList *list) { EXPECT_EQ(list->items().back().text, QStringLiteral("（其余未列出的取值）")); });
    EXPECT_TRUE(model->columnFilters().isEmpty()) << "nothing was changed";
    press([&](ZB::CheckList *list) { toggle(list, Qt::Key_Home); });
    EXPECT_EQ(model->columnFilters().value(Code).value(0).first, ZB::FilterExcept);
    EXPECT_EQ(model->size(), rows - 1);
    press([](ZB::CheckList *) {});
    EXPECT_EQ(model->size(), rows - 1);
    press([&](ZB::CheckList *list) { toggle(list, Qt::Key_End); });
    EXPECT_EQ(model->columnFilters().value(Code).value(0).first, ZB::FilterExact);
    EXPECT_EQ(model->size(), listed - 1) << "only what is listed and chosen";
    press([&](ZB::CheckList *list) {
        list->checkShown(false);
        toggle(list, Qt::Key_End);
    });
    EXPECT_EQ(model->size(), rows - listed);
    press([](ZB::CheckList *list) { list->checkShown(true); });
    EXPECT_EQ(model->size(), rows);
}

TEST_F(TableFilterTest, AFilterThatLeavesValuesOutLetsLaterOnesIn)
{
    QSet<QString> values{QStringLiteral("600000"), QStringLiteral("601318")};
    table->onFilterTrigger(Code, ZB::FilterExcept, values);
    EXPECT_EQ(rowCount(), 3);
    model->put({"f", "000002", "", 0, 1.0, 1});
    EXPECT_EQ(rowCount(), 4);
    ZB::FilterPopup *box = openFilter(Code);
    EXPECT_EQ(choices(box), QStringLiteral("x 000001 1\nx 000002 1\nx 300918 1\n  600000 2\nx 688293 1\n"
                                           "  601318 0\nx （其余未列出的取值） "));
    QTest::keyClick(box, Qt::Key_Return);
    closePopups();
    EXPECT_EQ(model->columnFilters().value(Code), (ZB::FilterConditions{{ZB::FilterExcept, values}}));
}

TEST_F(TableFilterTest, MenuItemsAreTheDistinctTextsInOrder)
{
    QPair<ZB::EFilterType, QSet<QString>> filter(ZB::FilterExact, {"卖出"});
    model->filterColumn(Side, filter);
    EXPECT_EQ(table->getMenuItems(Code), QStringList({"000001", "600000"}));
    model->clearFilter();
    EXPECT_EQ(table->getMenuItems(Price), QStringList({"10.25", "12.50", "15.93", "98.70", "-"}));
    EXPECT_TRUE(table->getMenuItems(-1).isEmpty());
}

} // namespace

} // namespace tabletest
