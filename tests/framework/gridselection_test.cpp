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
