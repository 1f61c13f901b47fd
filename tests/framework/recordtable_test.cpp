#include <QtCore/QTemporaryDir>
#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtTest/QTest>
#include <QtWidgets/QPushButton>

#include "tablefixture.h"
#include "zb/coddevenrowtable.h"

namespace {

using tabletest::EventWindow;

/// A table that counts how often its cells were filled, as 行 and a number.
class LazyTable : public ZB::COddEvenRowTable
{
public:
    using ZB::COddEvenRowTable::COddEvenRowTable;
    int filled = 0;
    int factor = 1;

protected:
    void showCell(int row, int column) override
    {
        ++filled;
        setCellText(row, column, column == 0 ? QStringLiteral("行%1").arg(row) : QString::number(row * factor));
    }
    QVariant cellValue(int row, int column) const override { return column == 0 ? QVariant() : QVariant(row * factor); }
};

class RecordTable : public testing::Test
{
protected:
    RecordTable()
    {
        refhost::setUserConfig(std::make_unique<refhost::UserConfig>());
        build();
    }

    ~RecordTable() override
    {
        window.reset();
        refhost::setUserConfig(nullptr);
    }

    void build()
    {
        window = std::make_unique<EventWindow>();
        window->resize(400, 300);
        table = new LazyTable(912, window.get(), 0x1ff);
        ZB::CTableColumn name;
        name.header = "名称";
        name.filterable = true;
        ZB::CTableColumn number;
        number.header = "数量";
        number.type = QVariant::Int;
        number.alignment = Qt::AlignRight | Qt::AlignVCenter;
        number.flashes = true;
        table->addColumn(name);
        table->addColumn(number);
        auto *layout = new QVBoxLayout(window.get());
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(table);
        window->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    }

    void addRows(int count)
    {
        table->addRows(QVector<quint64>(count, 0));
        table->updateTable();
    }

    ZB::GridView *grid() const { return table->findChild<ZB::GridView *>(); }
    void clickHeader(int column, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        const QRect header = grid()->headerRect(column);
        QTest::mouseClick(grid(), Qt::LeftButton, modifiers, QPoint(header.left() + 6, header.center().y()));
    }

    std::unique_ptr<EventWindow> window;
    LazyTable *table = nullptr;
};

} // namespace

TEST_F(RecordTable, FillsACellOnceAndOnlyWhenItIsSeen)
{
    addRows(1000);
    const int seen = table->filled;
    EXPECT_GT(seen, 10);
    EXPECT_LT(seen, 60);
    table->updateTable();
    EXPECT_EQ(table->filled, seen);
    const quint64 frames = grid()->frameCount();
    table->markCell(999, 1);
    table->updateTable();
    EXPECT_EQ(grid()->frameCount(), frames) << "nobody has seen that cell";
    table->markCell(0, 1);
    table->markCell(999, 1);
    table->updateTable();
    EXPECT_EQ(table->filled, seen + 1);
    EXPECT_EQ(table->cellText(999, 0), "行999");
    EXPECT_EQ(table->cellText(1000, 0), QString());
    EXPECT_EQ(table->cellText(0, 2), QString());
}

TEST_F(RecordTable, ChangesShowWithTheNextFrameAndAllTogether)
{
    addRows(5);
    const quint64 frames = grid()->frameCount();
    table->factor = 10;
    for (int i = 0; i < 100; ++i)
        table->markRow(i % 5);
    table->setColumnFiltered(0, true); // the header has room for the mark
    EXPECT_EQ(grid()->frameCount(), frames);
    EXPECT_TRUE(QTest::qWaitFor([this, frames] { return grid()->frameCount() > frames; }));
    EXPECT_EQ(table->cellText(4, 1), "40");
}

TEST_F(RecordTable, AHeaderClickSortsByValueAndTellsIt)
{
    addRows(11);
    clickHeader(1);
    EXPECT_EQ(table->rows().first(), 10);
    EXPECT_EQ(window->takeEvents().filter("33").size(), 1);
    clickHeader(1);
    EXPECT_EQ(table->rows().first(), 0);
    table->factor = -1;
    table->markRow(3);
    EXPECT_EQ(table->rows().first(), 3) << "a row moves when its value does";
    table->setSortColumns({{7, 0}});
    EXPECT_TRUE(table->sortColumns().isEmpty());
}

TEST_F(RecordTable, TheSelectionIsCopiedWithItsFullNumbers)
{
    addRows(3);
    grid()->selectAll();
    table->copySelection(true);
    EXPECT_EQ(QGuiApplication::clipboard()->text().replace("\r\n", "\n"), "名称\t数量\n行0\t0\n行1\t1\n行2\t2\n");
}

TEST_F(RecordTable, ExportsWhatItShows)
{
    addRows(3);
    table->setSortColumns({{1, 1}});
    QTemporaryDir folder;
    const QString path = folder.filePath("rows.csv");
    EXPECT_TRUE(table->exportData(path));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(QString::fromUtf8(file.readAll()).remove(QChar(0xfeff)).replace("\r\n", "\n"),
              "名称,数量\n行2,2\n行1,1\n行0,0\n");
    EXPECT_FALSE(table->exportData(folder.filePath("no/such/folder.csv")));
    EXPECT_FALSE(table->exportData(QString()));
}

TEST_F(RecordTable, FindGoesToTheNextCellWithTheText)
{
    addRows(200);
    table->find("行150", true);
    EXPECT_TRUE(QTest::qWaitFor([this] { return table->currentRow() == 150; }));
}

TEST_F(RecordTable, WhatTheUserArrangesComesBack)
{
    addRows(2);
    grid()->setColumnOrder({1, 0});
    Q_EMIT grid()->columnMoved(1, 0);
    clickHeader(1);
    table->setColumnVisible(0, false);
    window.reset();
    build();
    table->updateTable();
    EXPECT_EQ(grid()->columnOrder(), (std::vector<int>{1, 0}));
    EXPECT_FALSE(table->columnVisible(0));
    EXPECT_EQ(table->sortColumns(), (QVector<QPair<int, int>>{{1, 1}}));
}

TEST_F(RecordTable, WidgetsGoWithTheirRows)
{
    addRows(100);
    auto *button = new QPushButton("平仓");
    table->setCellWidget(2, 1, button);
    table->updateTable();
    EXPECT_TRUE(button->isVisible());
    const auto rowUnder = [this, button] {
        return grid()->cellAt(button->mapTo(grid(), button->rect().center())).first;
    };
    const quint64 row = rowUnder();
    table->scrollToRow(99);
    table->updateTable();
    EXPECT_FALSE(button->isVisible());
    table->setSortColumns({{1, 1}});
    table->scrollToRow(2);
    table->updateTable();
    EXPECT_TRUE(button->isVisible());
    EXPECT_EQ(rowUnder(), row);
    const QPointer<QWidget> first(button);
    table->setCellWidget(2, 1, new QPushButton("撤单"));
    EXPECT_TRUE(QTest::qWaitFor([&first] { return first.isNull(); }));
    const QPointer<QWidget> second(table->cellWidget(2, 1));
    table->clearRows();
    EXPECT_TRUE(QTest::qWaitFor([&second] { return second.isNull(); }));
    const QPointer<QWidget> lost(new QPushButton("无处"));
    table->setCellWidget(5, 1, lost);
    EXPECT_TRUE(lost.isNull()) << "a widget without a cell does not leak";
}

TEST_F(RecordTable, RowsThatGoUnderAnOpenMenuKeepWhatTheyShowed)
{
    addRows(3);
    const ZB::GridHold hold(grid());
    const int before = table->filled;
    table->removeRow(1);
    table->markRow(0);
    table->updateTable();
    EXPECT_LE(table->filled, before + 2) << "the row that has gone is not asked for";
}

TEST_F(RecordTable, TheStatisticsRowShowsItsTextsOnceThereIsOne)
{
    addRows(1);
    EXPECT_FALSE(grid()->statisticsVisible());
    table->setStatText(1, "12");
    table->setStatColumnBoldFont(1, true);
    EXPECT_TRUE(grid()->statisticsVisible());
    EXPECT_FALSE(table->column(1).bold) << "cells stay as they are";
    table->setStatText(9, "nowhere");
    EXPECT_EQ(table->statText(9), QString());
}

TEST_F(RecordTable, EveryOtherRowStandsOnTheSecondBackgroundWhereAskedFor)
{
    EXPECT_FALSE(table->hasOddEvenRows());
    table->addOptions(ZB::TableOddEvenRows);
    addRows(2);
    EXPECT_TRUE(table->hasOddEvenRows());
    const QImage picture = grid()->grab().toImage();
    const int height = grid()->look().rowHeight;
    const int top = grid()->look().headerHeight;
    const int x = grid()->headerRect(0).right() - 3;
    EXPECT_NE(picture.pixel(x, top + 2), picture.pixel(x, top + height + 2));
}
