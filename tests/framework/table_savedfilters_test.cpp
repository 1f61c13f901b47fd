#include <QtGui/QAccessible>
#include <QtTest/QTest>

#include "framework/tablefixture.h"
#include "kv/cuserconfig.h"
#include "loggedlines.h"
#include "popups/gridbadge.h"
#include "table/settingtext.h"
#include "utils/clogcenter.h"

namespace tabletest {

namespace {

const QString settingPath = QStringLiteral("table/4711/setting");

class TableSavedFiltersTest : public TableTest
{
protected:
    TableSavedFiltersTest() { utils::getStdLogger()->addAppender(logged); }
    ~TableSavedFiltersTest() override { utils::getStdLogger()->removeAppender(logged); }

    static QString savedText() { return KV::getUserConfig()->value(settingPath).toString(); }
    /// The next change that is saved.
    void waitForSave(const std::function<void()> &change) const
    {
        const QString before = savedText();
        change();
        EXPECT_TRUE(QTest::qWaitFor([&] { return savedText() != before; }));
    }
    void choose(int column, int type, QSet<QString> texts) { table->onFilterTrigger(column, type, texts); }
    void narrow(int column, ZB::FilterConditions conditions)
    {
        for (ZB::FilterCondition &condition : conditions)
            model->filterColumnCombin(column, condition);
    }
    /// A new program with a model of these columns.
    void startAgain(const std::vector<Column> &columns = {Code, Name, Side, Price, Quantity})
    {
        rebuild(boost::make_shared<OrderModel>(columns));
        for (const Order &order : fiveOrders())
            model->put(order);
    }

    const std::shared_ptr<LoggedLines> logged = std::make_shared<LoggedLines>();
};

TEST_F(TableSavedFiltersTest, AFilterIsThereAgainWithItsSignAndCanBeTakenOff)
{
    waitForSave([this] {
        choose(Code, ZB::FilterExcept, {"688293", "601318"});
        choose(Side, ZB::FilterExact, {"买入"});
    });
    startAgain({Price, Side, Code});
    EXPECT_EQ(shown(), QStringLiteral("代码* 方向* 价格\n600000 买入 10.25\n300918 买入 15.93"));
    waitForSave([this] { QTest::keyClick(grid(), Qt::Key_L, Qt::ControlModifier | Qt::ShiftModifier); });
    startAgain();
    EXPECT_EQ(model->size(), 5);
    EXPECT_EQ(logged->text('\n'), "");
}

TEST_F(TableSavedFiltersTest, AFilterOnAHiddenColumnIsToldOverTheRows)
{
    const auto badge = [this] {
        settle();
        grid()->refreshNow();
        for (ZB::GridBadge *each : grid()->findChildren<ZB::GridBadge *>())
            if (each->isVisible())
                return each;
        return static_cast<ZB::GridBadge *>(nullptr);
    };
    waitForSave([this] {
        choose(Side, ZB::FilterExact, {"买入"});
        choose(Code, ZB::FilterContains, {"6"});
        table->setColumnVisible(Side, false);
    });
    startAgain();
    ASSERT_TRUE(badge());
    EXPECT_EQ(badge()->text(), QStringLiteral("隐藏列筛选中：方向"));
    EXPECT_EQ(model->size(), 2);
    QTest::mouseClick(badge(), Qt::LeftButton);
    EXPECT_FALSE(badge());
    EXPECT_EQ(model->size(), 3) << "the other filter stays";
}

TEST_F(TableSavedFiltersTest, ATableWithoutRowsSaysThatItIsFiltered)
{
    const auto told = [this] {
        settle();
        return QAccessible::queryAccessibleInterface(grid())->text(QAccessible::Description);
    };
    waitForSave([this] { choose(Code, ZB::FilterContains, {"nothing"}); });
    rebuild(boost::make_shared<OrderModel>());
    EXPECT_EQ(told(), QStringLiteral("没有数据\n（筛选中，Ctrl+Shift+L 清除）"));
    table->setEmptyText(QStringLiteral("没有委托"));
    EXPECT_EQ(told(), QStringLiteral("没有委托\n（筛选中，Ctrl+Shift+L 清除）"));
    table->clearFilter();
    EXPECT_EQ(told(), QStringLiteral("没有委托"));
}

TEST_F(TableSavedFiltersTest, ConditionsOfEveryKindComeBackAsTheyWere)
{
    const auto exact = ZB::FilterExact;
    const auto contains = ZB::FilterContains;
    const auto except = ZB::FilterExcept;
    const ZB::FilterConditions all[] = {
        {{exact, {"600000", "\"\\ \n", ""}}},
        {{exact, {"600000"}}, {exact, {"000001"}}},
        {{contains, {"60 68", "0 1"}}},
        {{contains, {"6"}}, {contains, {"0"}}},
        {{contains, {"6", "3"}}, {contains, {"0"}}, {except, {"688293", "601318"}}},
        {{except, {"600000", ""}}},
        {},
    };
    for (const ZB::FilterConditions &conditions : all) {
        model->clearFilter();
        narrow(Code, conditions);
        const auto filters = model->columnFilters();
        const QString rows = shown();
        const QString text = ZB::settingText(table->getTableSetting());
        model->clearFilter();
        narrow(Name, {{exact, {"浦发银行"}}});
        const auto setting = ZB::settingFromText(text);
        ASSERT_TRUE(setting);
        table->setTableSetting(*setting);
        EXPECT_EQ(model->columnFilters(), filters) << text.toStdString();
        EXPECT_EQ(shown(), rows) << text.toStdString();
        EXPECT_EQ(ZB::settingText(table->getTableSetting()), text);
    }
}

TEST_F(TableSavedFiltersTest, AColumnThatIsGoneOrCannotBeFilteredLosesItsFilterAndTheLogSaysSo)
{
    waitForSave([this] {
        choose(Name, ZB::FilterContains, {"浦发"});
        choose(Code, ZB::FilterExact, {"600000", "000001"});
    });
    startAgain({Side, Code});
    EXPECT_EQ(shown(), QStringLiteral("代码* 方向\n600000 买入\n000001 卖出\n600000 卖出"));
    EXPECT_EQ(logged->text('\n'), "[table|4711] the filter of column 名称 is dropped: there is no such column");
    logged->lines.clear();
    model = boost::make_shared<OrderModel>();
    table->installDataModel(model);
    table->setColumnFilterable(Code, false);
    settle();
    EXPECT_EQ(model->columnFilters().keys(), QList<int>{Name});
    EXPECT_EQ(logged->text('\n'), "[table|4711] the filter of column 代码 is dropped: this table has no such filter");
}

TEST_F(TableSavedFiltersTest, AFilterThatIsTooLargeIsNotSavedAndTheLogSaysSoOnce)
{
    QSet<QString> many;
    for (int code = 0; code < 100000; ++code)
        many.insert(QString::number(600000 + code));
    waitForSave([&] {
        choose(Code, ZB::FilterExact, many);
        choose(Name, ZB::FilterContains, {QString(ZB::maximumFilterCharacters - 20, QLatin1Char('x'))});
        choose(Side, ZB::FilterExact, {"买入"});
        choose(Price, ZB::FilterExact, {"10.25", "12.50", "15.93"});
    });
    EXPECT_LT(savedText().size(), ZB::maximumFilterCharacters + 2000);
    const std::string line = "[table|4711] the filter of column 代码 is not saved: the filters of a table may have "
                             "16384 characters\n[table|4711] the filter of column 价格 is not saved: the filters of a "
                             "table may have 16384 characters";
    EXPECT_EQ(logged->text('\n'), line);
    waitForSave([this] { table->setFrozenColumns(1); });
    EXPECT_EQ(logged->text('\n'), line);
    startAgain();
    EXPECT_EQ(model->columnFilters().keys(), (QList<int>{Name, Side}));
}

TEST_F(TableSavedFiltersTest, SettingsWithoutFiltersLeaveThemAndWhatTheProgramFiltersStays)
{
    choose(Code, ZB::FilterExact, {"600000"});
    ZB::CBaseTableSettingParam former = table->getTableSetting();
    former.frame.filters.reset();
    EXPECT_FALSE(ZB::settingText(former).contains("filters"));
    table->setTableSetting(*ZB::settingFromText(ZB::settingText(former)));
    EXPECT_EQ(model->columnFilters().keys(), QList<int>{Code});

    waitForSave([this] { choose(Side, ZB::FilterExact, {"买入"}); });
    model = boost::make_shared<OrderModel>();
    narrow(Code, {{ZB::FilterContains, {"3"}}});
    narrow(Price, {{ZB::FilterContains, {"9"}}});
    table->installDataModel(model);
    settle();
    EXPECT_EQ(model->columnFilters().keys(), (QList<int>{Code, Side, Price}));
    EXPECT_EQ(model->columnFilters().value(Code), (ZB::FilterConditions{{ZB::FilterContains, {"3"}}}));
}

TEST_F(TableSavedFiltersTest, DamagedFiltersAreIgnoredOneByOne)
{
    const char *const damaged[] = {"7",
                                   "null",
                                   "[]",
                                   "[0]",
                                   "[0,7]",
                                   "[-1,[[0,[\"a\"]]]]",
                                   "[\"0\",[[0,[\"a\"]]]]",
                                   "[0,[[3,[\"a\"]]]]",
                                   "[0,[[0,[\"a\"]],[1,\"b\"]]]",
                                   "[0,[[0,[\"a\",7]]]]",
                                   "[0,[[1,[]]]]",
                                   "[0,[[2,[]]]]",
                                   "[0,[]]",
                                   "[0,[[0,[\"a\"],1]]]",
                                   "[4294967296,[[0,[\"a\"]]]]"};
    QStringList entries;
    for (const char *entry : damaged)
        entries.append(entry);
    entries += {"[3,[[1,[\"x\",\"x\"]],[0,[\"ax\",\"b\"]]]]", "[3,[[0,[\"second\"]]]]", "[99,[[2,[\"a\"]]]]"};
    const QString text = QStringLiteral("{\"columns\":[],\"frame\":{\"filters\":[%1]}}");
    const auto setting = ZB::settingFromText(text.arg(entries.join(',')));
    ASSERT_TRUE(setting && setting->frame.filters);
    EXPECT_TRUE(ZB::settingText(*setting).contains("\"filters\":[[3,[[0,[\"ax\"]]]],[99,[[2,[\"a\"]]]]]"))
        << ZB::settingText(*setting).toStdString();
    for (const char *none : {"{\"columns\":[],\"frame\":{\"filters\":7}}", "{\"columns\":[]}"})
        EXPECT_FALSE(ZB::settingFromText(none)->frame.filters) << none;
}

} // namespace

} // namespace tabletest
