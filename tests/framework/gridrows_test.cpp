#include <gtest/gtest.h>

#include <algorithm>

#include "framework/gridlistsource.h"
#include "grid/gridanchor.h"
#include "grid/gridrows.h"

using namespace ZB;

namespace {

/// Five whole rows on the screen.
struct Shown
{
    explicit Shown(int rowCount) : source(rowCount)
    {
        geometry.size = QSize(200, 100);
        geometry.rowHeight = 20;
        rows.update(source, geometry, false, NoGridRow);
    }
    void update(GridRowId current = NoGridRow, bool held = false) { rows.update(source, geometry, held, current); }
    void scrollToRow(qint64 row) { rows.scrollTo(&source, geometry, 0, row * 20); }
    std::string ids() const { return idsOf(rows.window()).toStdString(); }
    std::string updated()
    {
        update();
        return ids();
    }

    ListSource source;
    GridGeometry geometry;
    GridRows rows;
};

void reverse(std::vector<ListSource::Row> &rows)
{
    std::reverse(rows.begin(), rows.end());
}

} // namespace

TEST(GridRows, StaysOnItsRowsWhenOthersComeAndGo)
{
    Shown shown(100);
    shown.scrollToRow(50);
    ASSERT_EQ(shown.ids(), "51 52 53 54 55");
    for (int i = 0; i < 30; ++i)
        shown.source.insert(3);
    shown.source.remove(0);
    EXPECT_EQ(shown.updated(), "51 52 53 54 55");
    EXPECT_EQ(shown.rows.window().first, 79);
    shown.source.remove(80); // 52, from the middle of the screen
    EXPECT_EQ(shown.updated(), "50 51 53 54 55") << "as few as possible move";
    shown.source.remove(82);
    EXPECT_EQ(shown.updated(), "50 51 53 54 56");
}

TEST(GridRows, StaysAtTheTopWhileItFollowsTheTop)
{
    Shown shown(100);
    shown.rows.setFollow(GridFollow::Top, shown.geometry);
    shown.source.insert(0);
    EXPECT_EQ(shown.updated(), "101 1 2 3 4");
    shown.scrollToRow(1);
    EXPECT_FALSE(shown.rows.isAtEdge());
    shown.source.insert(0);
    shown.source.insert(0);
    EXPECT_EQ(shown.updated(), "1 2 3 4 5");
    EXPECT_EQ(shown.rows.unseen(), 2);
    shown.scrollToRow(0);
    EXPECT_EQ(shown.rows.unseen(), 0);
    shown.source.insert(0);
    EXPECT_EQ(shown.updated(), "104 103 102 101 1");
}

TEST(GridRows, FollowsTheBottomThroughGrowthAndThroughSmallerSizes)
{
    Shown shown(3);
    shown.rows.setFollow(GridFollow::Bottom, shown.geometry);
    for (int i = 0; i < 10; ++i)
        shown.source.insert(shown.source.rowCount());
    EXPECT_EQ(shown.updated(), "9 10 11 12 13");
    shown.geometry.size.setHeight(60);
    EXPECT_EQ(shown.updated(), "11 12 13");
    shown.scrollToRow(5);
    shown.source.insert(13);
    shown.source.insert(0); // not at the edge that is followed
    EXPECT_EQ(shown.updated(), "6 7 8");
    EXPECT_EQ(shown.rows.unseen(), 1);
    shown.source.remove(13); // the row that was last when the view left
    shown.update();
    EXPECT_EQ(shown.rows.unseen(), 1);
    shown.scrollToRow(100);
    EXPECT_TRUE(shown.rows.isAtEdge());
    EXPECT_EQ(shown.rows.unseen(), 0);
}

TEST(GridRows, WithoutAnEdgeToFollowItStaysOnItsRowsEvenAtTheTop)
{
    Shown shown(100);
    shown.source.insert(0);
    EXPECT_EQ(shown.updated(), "1 2 3 4 5");
}

TEST(GridRows, AHeldOrderStaysWhileContentsGoOn)
{
    Shown shown(100);
    shown.scrollToRow(10);
    shown.source.reorder(reverse);
    shown.source.insert(0);
    shown.source.remove(shown.source.rowOf(13));
    shown.source.setText(shown.source.rowOf(12), 0, QStringLiteral("new"));
    shown.update(NoGridRow, true);
    EXPECT_EQ(shown.ids(), "11 12 13 14 15");
    EXPECT_EQ(shown.geometry.rowCount, 100);
    EXPECT_EQ(shown.rows.window().rows[1].version, 1u);
    GridContent content;
    shown.source.content(1, 0, content);
    EXPECT_EQ(content.text, "new");
    shown.rows.expectSort();
    shown.update(14);
    EXPECT_EQ(shown.rows.idAt(shown.rows.window().first + 3), 14u) << shown.ids();
}

TEST(GridRows, AfterASortTheCurrentRowKeepsItsPlaceOnTheScreen)
{
    Shown shown(100);
    shown.scrollToRow(20);
    shown.rows.expectSort();
    shown.source.settling = true;
    shown.source.insert(0); // something unimportant comes first: the sort is still awaited
    shown.update(23);
    ASSERT_EQ(shown.ids(), "21 22 23 24 25");
    shown.source.settling = false;
    shown.source.reorder([](auto &rows) {
        std::sort(rows.begin(), rows.end(), [](const auto &a, const auto &b) {
            return std::make_pair(a.id % 7, a.id) < std::make_pair(b.id % 7, b.id);
        });
    });
    shown.update(23);
    EXPECT_EQ(shown.ids(), "9 16 23 30 37");
    EXPECT_EQ(shown.rows.window().rows[2].id, 23u);
}

TEST(GridRows, WithoutACurrentRowInSightASortShowsWhatIsFirst)
{
    Shown shown(100);
    for (const GridRowId current : {NoGridRow, GridRowId(80)}) {
        shown.scrollToRow(20);
        shown.rows.expectSort();
        shown.source.settling = true;
        shown.update(current);
        ASSERT_EQ(shown.rows.window().first, 20) << "the new order is not there yet";
        shown.source.reorder(reverse);
        shown.source.settling = false;
        shown.update(current);
        EXPECT_EQ(shown.rows.window().first, 0);
        shown.scrollToRow(20);
        shown.source.reorder(reverse);
        shown.update(current);
        EXPECT_EQ(shown.rows.window().first, 79) << "it is told once, and stays on its rows again";
    }
}

TEST(GridRows, SurvivesSourcesThatLoseTheirRows)
{
    Shown shown(100);
    shown.scrollToRow(90);
    shown.source.reorder([](auto &rows) { rows.resize(3); });
    EXPECT_EQ(shown.updated(), "1 2 3");
    EXPECT_EQ(shown.geometry.scrollY, 0);
    shown.source.reorder([](auto &rows) { rows.clear(); });
    EXPECT_EQ(shown.updated(), "");
    shown.source.insert(0);
    EXPECT_EQ(shown.updated(), "101");
}

TEST(GridAnchor, MostRowsDecide)
{
    struct Case
    {
        const char *what;
        std::vector<qint64> places; ///< of rows that began at 100
        int current;
        bool sorted;
        qint64 shift;
    };
    const std::vector<Case> cases = {
        {"nothing moved", {100, 101, 102}, -1, false, 0},
        {"all moved", {105, 106, 107}, -1, false, 5},
        {"one came in between", {100, 101, 103, 104, 105}, -1, false, 1},
        {"one jumped to the front", {0, 101, 102, 103}, -1, false, 0},
        {"the current row jumped", {9000, 101, 102, 103}, 0, false, 0},
        {"all gone", {-1, -1, -1}, -1, false, 0},
        {"one is left", {-1, -1, 17}, -1, false, -85},
        {"spread in order, no current row", {200, 300, 400, 500}, -1, false, 100},
        {"spread in order, current row third", {200, 300, 400, 500}, 2, false, 298},
        {"scattered by themselves", {900, 20, 400, 7}, 2, false, 0},
        {"sorted by the user", {900, 20, 400, 7}, 2, true, 298},
        {"reversed by the user", {103, 102, 101, 100}, 0, true, 3},
        {"sorted, current row gone", {-1, 20, 400, 7}, 0, true, 0},
    };
    for (const Case &one : cases) {
        GridAnchorCase change;
        change.first = 100;
        change.places = one.places;
        change.current = one.current;
        change.sortedByUser = one.sorted;
        EXPECT_EQ(anchorShift(change), one.shift) << one.what;
    }
}
