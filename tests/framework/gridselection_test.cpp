#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>

#include "framework/gridlistsource.h"
#include "grid/gridchooser.h"
#include "grid/gridrowset.h"

using namespace ZB;

namespace {

struct Chosen
{
    explicit Chosen(int rowCount) : source(rowCount)
    {
        geometry.size = QSize(200, 100);
        geometry.rowHeight = 20;
        geometry.columns.reset(source.columnCount());
        chooser.setSource(&source);
        update();
    }
    void update()
    {
        rows.update(source, geometry, false, chooser.current().row);
        chooser.follow();
    }
    GridTarget at(qint64 place, int column = 0) const { return chooser.target(place, column); }
    std::string selected() const { return joined(chooser.selection().shownRows(source)).toStdString(); }

    ListSource source;
    GridGeometry geometry;
    GridRows rows;
    GridChooser chooser{rows, geometry};
};

} // namespace

TEST(GridRowSet, AgreesWithAPlainSetThroughRandomChanges)
{
    const unsigned seed = 20240601;
    std::mt19937 random(seed);
    GridRowSet set;
    std::set<GridRowId> model;
    EXPECT_FALSE(set.insert(NoGridRow));
    for (int step = 0; step < 20000; ++step) {
        // Ids that lie together, and some that lie anywhere.
        const GridRowId id =
            random() % 4 ? 1 + random() % 300 : (static_cast<GridRowId>(random()) << 32) + 1 + random() % 3;
        if (random() % 2)
            EXPECT_EQ(set.insert(id), model.insert(id).second);
        else
            EXPECT_EQ(set.remove(id), model.erase(id) == 1);
        ASSERT_EQ(set.contains(id), model.count(id) == 1) << "seed " << seed << " step " << step;
        ASSERT_FALSE(set.contains(NoGridRow));
    }
    EXPECT_EQ(set.ids(), std::vector<GridRowId>(model.begin(), model.end()));
    EXPECT_EQ(set.size(), static_cast<qint64>(model.size()));
}

TEST(GridSelection, ClicksChooseToggleAndStretch)
{
    Chosen chosen(20);
    chosen.chooser.chooseRow(chosen.at(3), Qt::NoModifier);
    EXPECT_EQ(chosen.selected(), "4");
    chosen.chooser.chooseRow(chosen.at(6), Qt::ShiftModifier);
    EXPECT_EQ(chosen.selected(), "4 5 6 7");
    chosen.chooser.chooseRow(chosen.at(1), Qt::ShiftModifier); // from the same beginning
    EXPECT_EQ(chosen.selected(), "2 3 4");
    chosen.chooser.chooseRow(chosen.at(9), Qt::ControlModifier);
    chosen.chooser.chooseRow(chosen.at(2), Qt::ControlModifier);
    EXPECT_EQ(chosen.selected(), "2 4 10");
    chosen.chooser.chooseRow(chosen.at(12), Qt::ControlModifier);
    chosen.chooser.chooseRow(chosen.at(14), Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(chosen.selected(), "2 4 10 13 14 15");
    chosen.chooser.chooseRow(chosen.at(0), Qt::NoModifier);
    EXPECT_EQ(chosen.selected(), "1");
    chosen.chooser.selectAll();
    EXPECT_EQ(chosen.chooser.selection().shownRows(chosen.source).size(), 20u);
}

TEST(GridSelection, AStretchGoesToWhereItsBeginningIsNow)
{
    Chosen chosen(20);
    chosen.chooser.chooseRow(chosen.at(3), Qt::NoModifier); // id 4
    chosen.source.reorder([](auto &rows) { std::rotate(rows.begin(), rows.begin() + 3, rows.begin() + 4); });
    chosen.update();
    chosen.chooser.chooseRow(chosen.at(2), Qt::ShiftModifier);
    EXPECT_EQ(chosen.selected(), "4 1 2");
    chosen.source.remove(0); // where it began
    chosen.update();
    chosen.chooser.chooseRow(chosen.at(5), Qt::ShiftModifier);
    EXPECT_EQ(chosen.selected(), "7");
}

TEST(GridSelection, BlocksKeepTheirColumnsAndRows)
{
    Chosen chosen(20);
    chosen.geometry.columns.setOrder({4, 2, 0, 1, 3});
    chosen.chooser.chooseRow(chosen.at(2, 2), Qt::NoModifier);
    chosen.chooser.beginCells(false);
    chosen.chooser.extendCells(chosen.at(4, 1));
    const GridSelection &selection = chosen.chooser.selection();
    EXPECT_EQ(chosen.selected(), "") << "rows and blocks exclude one another";
    ASSERT_EQ(selection.cellBlocks().size(), 1u);
    EXPECT_EQ(joined(selection.cellBlocks()[0].columns), "0 1 2");
    chosen.geometry.columns.setOrder({0, 1, 2, 3, 4});
    chosen.source.reorder([](auto &rows) { std::reverse(rows.begin(), rows.end()); });
    EXPECT_EQ(joined(GridSelection::inShownOrder(chosen.source, selection.cellBlocks()[0].rows)), "5 4 3");
    EXPECT_TRUE(selection.isCellSelected(4, 1));
    EXPECT_FALSE(selection.isCellSelected(4, 3));
    EXPECT_FALSE(selection.isCellSelected(6, 1));
    chosen.chooser.beginCells(true);
    chosen.chooser.extendCells(chosen.at(0, 4));
    EXPECT_EQ(selection.cellBlocks().size(), 2u);
    chosen.chooser.chooseRow(chosen.at(0), Qt::NoModifier);
    EXPECT_FALSE(selection.hasBlocks());
}

TEST(GridSelection, TheCurrentRowIsRememberedWhileItIsNotShown)
{
    Chosen chosen(20);
    chosen.chooser.chooseRow(chosen.at(5), Qt::NoModifier);
    const auto all = chosen.source.rows;
    chosen.source.remove(5);
    chosen.update();
    EXPECT_FALSE(chosen.chooser.isCurrentShown());
    EXPECT_EQ(chosen.chooser.cursorPlace(), 5);
    EXPECT_EQ(chosen.selected(), "");
    chosen.source.reorder([&](auto &rows) {
        rows = all;
        std::reverse(rows.begin(), rows.end());
    });
    chosen.update();
    EXPECT_TRUE(chosen.chooser.isCurrentShown());
    EXPECT_EQ(chosen.chooser.cursorPlace(), 14);
    EXPECT_EQ(chosen.selected(), "6");
}

TEST(GridSelection, StaysOnItsRecordsThroughRandomChanges)
{
    const unsigned seed = 99;
    std::mt19937 random(seed);
    Chosen chosen(60);
    std::set<GridRowId> model;
    const auto place = [&] { return static_cast<qint64>(random() % static_cast<unsigned>(chosen.source.rowCount())); };
    for (int step = 0; step < 3000; ++step) {
        switch (random() % 7) {
        case 0:
            chosen.source.insert(place());
            break;
        case 1:
            if (chosen.source.rowCount() > 20)
                chosen.source.remove(place());
            break;
        case 2:
            chosen.source.reorder([&](auto &rows) { std::shuffle(rows.begin(), rows.end(), random); });
            break;
        case 3: {
            const GridTarget cell = chosen.at(place());
            chosen.chooser.chooseRow(cell, Qt::NoModifier);
            model = {cell.row};
            break;
        }
        case 4: {
            const GridTarget cell = chosen.at(place());
            chosen.chooser.chooseRow(cell, Qt::ControlModifier);
            if (!model.insert(cell.row).second)
                model.erase(cell.row);
            break;
        }
        case 5: {
            const GridTarget from = chosen.at(place());
            const GridTarget to = chosen.at(place());
            chosen.chooser.chooseRow(from, Qt::NoModifier);
            chosen.chooser.chooseRow(to, Qt::ShiftModifier);
            model.clear();
            for (qint64 i = std::min(from.place, to.place); i <= std::max(from.place, to.place); ++i)
                model.insert(chosen.source.idAt(i));
            break;
        }
        default:
            chosen.rows.scrollTo(&chosen.source, chosen.geometry, 0, place() * 20);
        }
        chosen.update();
        std::vector<GridRowId> expected;
        for (const auto &row : chosen.source.rows)
            if (model.count(row.id))
                expected.push_back(row.id);
        ASSERT_EQ(chosen.selected(), joined(expected).toStdString()) << "seed " << seed << " step " << step;
    }
}
