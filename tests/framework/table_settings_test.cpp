#include <QtTest/QTest>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSpinBox>

#include "framework/tablefixture.h"
#include "kv/cuserconfig.h"
#include "popups/checkbutton.h"
#include "popups/checklist.h"
#include "popups/columnpopup.h"
#include "table/settingtext.h"
#include "theme/themeservice.h"

namespace tabletest {

namespace {

const QString settingPath = QStringLiteral("table/4711/setting");

class TableSettingsTest : public TableTest
{
protected:
    /// The arrangement of columns as text: number, width where one is chosen, a minus for hidden ones.
    static QString columnsOf(const ZB::CBaseTableSettingParam &setting)
    {
        QStringList texts;
        for (const ZB::CBaseTableColumnSetting &column : setting.columns)
            texts.append(
                QStringLiteral("%1%2%3").arg(column.visible ? "" : "-", column.name,
                                             column.width ? QStringLiteral(":%1").arg(column.width) : QString()));
        return texts.join(QLatin1Char(' '));
    }

    ZB::ColumnPopup *openColumns()
    {
        QTest::keyClick(grid(), Qt::Key_O, Qt::ControlModifier | Qt::ShiftModifier);
        return popup<ZB::ColumnPopup>();
    }

    static QPushButton *button(const QWidget *box, const QString &text)
    {
        for (QPushButton *each : box->findChildren<QPushButton *>())
            if (each->text() == text)
                return each;
        return nullptr;
    }

    bool waitForSave() const
    {
        return QTest::qWaitFor([] { return !KV::getUserConfig()->value(settingPath).toString().isEmpty(); });
    }

    void arrange()
    {
        ZB::CBaseTableSettingParam setting;
        setting.columns = {{Quantity, -1, QStringLiteral("数量"), 120, true},
                           {Code, -1, QStringLiteral("代码"), 0, true},
                           {Price, -1, QStringLiteral("价格"), 90, true},
                           {Side, -1, QStringLiteral("方向"), 0, false}};
        setting.frame.sorts = {{Price, 1}, {Code, 0}};
        setting.frame.frozenColumns = 2;
        setting.frame.marks = {{Quantity, 1000000, QStringLiteral("clr_global_rise")}};
        setting.columnSets.insert(QStringLiteral("精简"), {{Code, -1, QStringLiteral("代码"), 66, true},
                                                           {Name, -1, QStringLiteral("名称"), 0, false}});
        table->setTableSetting(setting);
    }
};

TEST_F(TableSettingsTest, SettingsComeBackAsTheyWereGiven)
{
    arrange();
    const ZB::CBaseTableSettingParam setting = table->getTableSetting();
    EXPECT_EQ(columnsOf(setting), QStringLiteral("数量:120 代码 名称 价格:90 -方向"));
    EXPECT_EQ(setting.frame.sorts, (QVector<QPair<int, int>>{{Price, 1}, {Code, 0}}));
    EXPECT_EQ(setting.frame.frozenColumns, 2);
    EXPECT_EQ(setting.columnSets.keys(), QStringList({QStringLiteral("精简")}));
    EXPECT_EQ(shown().section(QLatin1Char('\n'), 0, 1), QStringLiteral("数量 代码↑| 名称 价格↓\n"
                                                                       "50 688293 =奥浦迈 98.70"));
    const auto again = ZB::settingFromText(ZB::settingText(setting));
    ASSERT_TRUE(again);
    EXPECT_EQ(ZB::settingText(*again), ZB::settingText(setting));
}

TEST_F(TableSettingsTest, TheUserFindsHisArrangementAgainAlsoWithOtherColumns)
{
    arrange();
    table->setFrozenColumns(1);
    ASSERT_TRUE(waitForSave());
    rebuild(boost::make_shared<OrderModel>(std::vector<Column>{Price, Name, Code, Quantity}));
    for (const Order &order : fiveOrders())
        model->put(order);
    EXPECT_EQ(columnsOf(table->getTableSetting()), QStringLiteral("数量:120 代码 名称 价格:90"));
    EXPECT_EQ(shown().section(QLatin1Char('\n'), 0, 1), QStringLiteral("数量| 代码↑ 名称 价格↓\n"
                                                                       "50 688293 =奥浦迈 98.70"));
    EXPECT_EQ(table->rowMarks().size(), 1);
    EXPECT_EQ(table->rowMarks().value(0).column, 3);
}

TEST_F(TableSettingsTest, FieldsAreFoundByTheirIdsWhateverTheirNames)
{
    for (int column = 0; column < ColumnCount; ++column)
        table->setColumnFieldId(column, 100 + column);
    ZB::CBaseTableSettingParam setting;
    setting.columns = {{7, 100 + Price, QStringLiteral("成交价"), 0, true}, {8, 555, QStringLiteral("代码"), 0, false}};
    setting.frame.sorts = {{7, 0}};
    table->setTableSetting(setting);
    EXPECT_EQ(shown().section(QLatin1Char('\n'), 0, 0), QStringLiteral("代码 名称 方向 价格↑ 数量"));
    EXPECT_EQ(table->getTableSetting().columns.at(3).fieldId, 100 + Price);
}

TEST_F(TableSettingsTest, ANewColumnStandsBehindItsNeighbour)
{
    arrange();
    table->setFrozenColumns(0);
    ASSERT_TRUE(waitForSave());
    model->addColumn(Code);
    table->addTableColumn(ColumnCount);
    EXPECT_EQ(shown().section(QLatin1Char('\n'), 0, 0), QStringLiteral("数量 代码↑ 名称 价格↓ 代码"));
    EXPECT_TRUE(table->columnVisible(ColumnCount));
    table->addTableColumn(ColumnCount + 1);
    EXPECT_FALSE(table->columnVisible(ColumnCount + 1));
}

TEST_F(TableSettingsTest, DamagedSettingsAreIgnored)
{
    const QString fresh = columnsOf(table->getTableSetting());
    for (const QVariant &damaged :
         {QVariant(QStringLiteral("{\"columns\":[{\"column\"")), QVariant(QStringLiteral("[]")), QVariant(17),
          QVariant(QStringLiteral("{\"columns\":7}")),
          QVariant(QStringLiteral("{\"columns\":[7,null,{\"column\":99,\"width\":-5},{\"field\":\"x\"}],\"frame\":"
                                  "{\"sorts\":[[99,1],[0],\"x\"],\"marks\":[[99,5,\"k\"],[0,-1,\"k\"]],"
                                  "\"frozen\":1e9},\"sets\":[]}"))}) {
        KV::getUserConfig()->setValue(settingPath, damaged);
        rebuild(model);
        EXPECT_EQ(columnsOf(table->getTableSetting()), fresh) << damaged.toString().toStdString();
        EXPECT_TRUE(model->sortColumns().isEmpty());
        EXPECT_LE(table->frozenColumns(), int(ColumnCount));
    }
    ZB::CBaseTableSettingParam allHidden;
    for (int column = 0; column < ColumnCount; ++column)
        allHidden.columns.append({column, -1, QString(), 1000000, false});
    table->setTableSetting(allHidden);
    EXPECT_FALSE(grid()->visibleColumns().empty());
}

TEST_F(TableSettingsTest, WidthsThatTheUserChoseSurviveFitting)
{
    const QRect header = grid()->headerRect(Name);
    const QPoint edge(header.right(), header.center().y());
    drag(grid(), edge, edge + QPoint(61, 0));
    const int wide = table->columnWidth(Name);
    EXPECT_GT(wide, header.width() + 50);
    const int before = table->columnWidth(Quantity);
    table->fitVisibleColumns();
    EXPECT_EQ(table->columnWidth(Name), wide);
    EXPECT_NE(table->columnWidth(Quantity), before);
    ASSERT_TRUE(waitForSave());
    rebuild(model);
    EXPECT_EQ(table->columnWidth(Name), wide);
    QTest::keyClick(grid(), Qt::Key_W, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_LT(table->columnWidth(Name), wide);
}

TEST_F(TableSettingsTest, AColumnGrowsWithItsNumbersUnlessTheUserHasChosenItsWidth)
{
    constexpr int given = 90;
    const qint64 great = 123456789012;
    table->setColumnWidth(Quantity, given);
    const QRect header = grid()->headerRect(Price);
    const QPoint edge(header.right(), header.center().y());
    drag(grid(), edge, edge - QPoint(header.width() - 45, 0));
    const int chosen = table->columnWidth(Price);
    ASSERT_LT(chosen, header.width());
    table->setColumnWidth(Name, chosen);
    settle();
    EXPECT_EQ(table->columnWidth(Quantity), given);
    model->put({"great", "600000", QString(30, QChar(0x94f6)), 0, 1234567890.25, great});
    EXPECT_TRUE(QTest::qWaitFor([this] { return table->columnWidth(Quantity) > given; }));
    const int grown = table->columnWidth(Quantity);
    EXPECT_EQ(table->columnWidth(Price), chosen);
    EXPECT_EQ(table->columnWidth(Name), chosen) << "texts are cut with an ellipsis";
    EXPECT_EQ(table->getTableSetting().columns.at(Quantity).width, given) << "which is what comes back";

    model->put({"great", "600000", QString(), 0, 1.5, 100});
    settle();
    EXPECT_EQ(table->columnWidth(Quantity), grown);
    table->setTableSetting(table->getTableSetting());
    EXPECT_EQ(table->columnWidth(Quantity), given);
    table->fitVisibleColumns();
    EXPECT_EQ(table->columnWidth(Quantity), given);
    model->put({"great", "600000", QString(), 0, 1.5, great});
    EXPECT_TRUE(QTest::qWaitFor([&] { return table->columnWidth(Quantity) == grown; }))
        << "a width that the program has given is no choice of the user's, also when settings repeat it";
}

TEST_F(TableSettingsTest, FittingDoesNotPaintForEveryColumn)
{
    struct CountingRow : OrderRow
    {
        CountingRow(const Order &shownOrder, int &counter) : OrderRow(shownOrder), asked(counter) {}
        QString getDisplayQString(int column) override
        {
            ++asked;
            return OrderRow::getDisplayQString(column);
        }
        int &asked;
    };
    constexpr int rows = 6;
    int asked = 0;
    model->clear();
    for (int i = 0; i < rows; ++i)
        model->addData(
            boost::make_shared<CountingRow>(Order{"k" + std::to_string(i), "600000", "浦发银行", 0, 1.5, 100}, asked));
    settle();
    asked = 0;
    table->fitVisibleColumns();
    settle();
    // Once to measure, once or twice to paint, and once a second besides.
    EXPECT_LE(asked, 4 * rows * ColumnCount);
    EXPECT_GE(asked, rows * ColumnCount);
}

TEST_F(TableSettingsTest, TheMarksOfAHeaderLeaveItsTextWholeIfItWas)
{
    const auto choose = [this](int width) {
        ZB::CBaseTableSettingParam setting;
        for (const Column column : {Code, Price})
            setting.columns.append({column, -1, model->columnHeader(column), width, true});
        table->setTableSetting(setting);
        settle();
    };
    int whole = 100;
    for (choose(whole); !grid()->isHeaderCut(Code) && !grid()->isHeaderCut(Price); choose(whole))
        --whole;
    choose(++whole);
    clickHeader(Price);
    EXPECT_FALSE(grid()->isHeaderCut(Price));
    EXPECT_GT(table->columnWidth(Price), whole);
    QPair<ZB::EFilterType, QSet<QString>> codes(ZB::FilterContains, {QStringLiteral("6")});
    model->filterColumn(Code, codes);
    settle();
    EXPECT_FALSE(grid()->isHeaderCut(Code));
    clickHeader(Code);
    clickHeader(Price, Qt::ControlModifier);
    EXPECT_FALSE(grid()->isHeaderCut(Code));
    EXPECT_FALSE(grid()->isHeaderCut(Price));

    table->setSortColumns({});
    choose(whole / 2);
    clickHeader(Price);
    EXPECT_EQ(table->columnWidth(Price), whole / 2);
}

TEST_F(TableSettingsTest, TheColumnBoxHidesMovesFreezesAndNames)
{
    table->setColumnInList(Side, false);
    ZB::ColumnPopup *box = openColumns();
    ASSERT_TRUE(box);
    auto *list = box->findChild<ZB::CheckList *>();
    EXPECT_EQ(list->items().size(), 4u);
    QTest::keyClick(list, Qt::Key_Home);
    QTest::keyClick(list, Qt::Key_Space);
    QTest::keyClick(list, Qt::Key_Down, Qt::ControlModifier);
    QTest::keyClick(list, Qt::Key_Down, Qt::ControlModifier);
    EXPECT_EQ(columnsOf(table->getTableSetting()), QStringLiteral("名称 价格 方向 -代码 数量"));

    // With the mouse: the last line to the top.
    const QPoint from = list->lineRect(3).center();
    drag(list->viewport(), from, QPoint(from.x(), list->lineRect(0).top() + 2));
    EXPECT_EQ(columnsOf(table->getTableSetting()), QStringLiteral("数量 名称 方向 价格 -代码"));

    box->findChild<QSpinBox *>()->setValue(2);
    QTest::mouseClick(box->findChild<ZB::CheckButton *>(), Qt::LeftButton);
    EXPECT_EQ(table->frozenColumns(), 2);
    EXPECT_FALSE(grid()->rowNumbersVisible());

    box->findChild<QComboBox *>()->lineEdit()->setText(QStringLiteral("盘中"));
    QTest::mouseClick(button(box, QStringLiteral("保存")), Qt::LeftButton);
    EXPECT_EQ(table->columnSets(), QStringList({QStringLiteral("盘中")}));
    QTest::mouseClick(button(box, QStringLiteral("恢复默认")), Qt::LeftButton);
    EXPECT_EQ(columnsOf(table->getTableSetting()), QStringLiteral("代码 名称 方向 价格 数量"));
    EXPECT_EQ(table->frozenColumns(), 0);
    EXPECT_TRUE(table->applyColumnSet(QStringLiteral("盘中")));
    EXPECT_EQ(columnsOf(table->getTableSetting()), QStringLiteral("数量 名称 方向 价格 -代码"));
    EXPECT_FALSE(table->applyColumnSet(QStringLiteral("盘后")));
    ASSERT_TRUE(waitForSave());
    rebuild(model);
    EXPECT_EQ(table->columnSets(), QStringList({QStringLiteral("盘中")}));
    EXPECT_FALSE(grid()->rowNumbersVisible());
    table->removeColumnSet(QStringLiteral("盘中"));
    EXPECT_TRUE(table->columnSets().isEmpty());
}

TEST_F(TableSettingsTest, TheListOfColumnSetsShowsItsLinesWhole)
{
    for (const QString &name : {QStringLiteral("盘中"), QStringLiteral("盘后")})
        table->saveColumnSet(name);
    for (const double scale : {1.0, 1.5}) {
        refhost::ThemeService::instance().setScale(scale);
        auto *sets = openColumns()->findChild<QComboBox *>();
        sets->showPopup();
        const QAbstractItemView *list = sets->view();
        int needed = 0;
        for (int row = 0; row < sets->count(); ++row)
            needed += list->visualRect(list->model()->index(row, 0)).height();
        EXPECT_GE(needed, 2 * 24 * scale);
        EXPECT_GE(list->viewport()->height(), needed) << scale;
        sets->hidePopup();
        popup<ZB::ColumnPopup>()->close();
    }
    refhost::ThemeService::instance().setScale(1.0);
}

TEST_F(TableSettingsTest, AColumnThatComesIntoSightFitsUnlessItHasAWidth)
{
    model->put({"long", "600000", QString(20, QChar(0x94f6)), 0, 1.5, 100});
    table->setColumnVisible(Name, false);
    settle();
    const int narrow = table->columnWidth(Name);
    auto *list = openColumns()->findChild<ZB::CheckList *>();
    QTest::keyClick(list, Qt::Key_Home);
    QTest::keyClick(list, Qt::Key_Down);
    QTest::keyClick(list, Qt::Key_Space);
    EXPECT_GT(table->columnWidth(Name), 2 * narrow);
    table->setColumnWidth(Name, narrow);
    QTest::keyClick(list, Qt::Key_Space);
    QTest::keyClick(list, Qt::Key_Space);
    EXPECT_TRUE(table->columnVisible(Name));
    EXPECT_EQ(table->columnWidth(Name), narrow);
}

TEST_F(TableSettingsTest, TheLastVisibleColumnCannotBeHidden)
{
    for (int column = 1; column < ColumnCount; ++column)
        table->setColumnVisible(column, false);
    ZB::ColumnPopup *box = openColumns();
    auto *list = box->findChild<ZB::CheckList *>();
    QTest::keyClick(list, Qt::Key_Home);
    QTest::keyClick(list, Qt::Key_Space);
    EXPECT_TRUE(table->columnVisible(Code));
    EXPECT_TRUE(list->items().front().checked);
    QTest::mouseClick(button(box, QStringLiteral("全部显示")), Qt::LeftButton);
    EXPECT_EQ(grid()->visibleColumns().size(), std::size_t(ColumnCount));
}

} // namespace

} // namespace tabletest
