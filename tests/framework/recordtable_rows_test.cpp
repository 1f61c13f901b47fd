#include <QtCore/QByteArray>
#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <random>

#include "recordtable/recordrows.h"
#include "rows/sortkey.h"

namespace {

using ZB::RecordRow;
using ZB::RecordRows;

struct Values
{
    int number = 0;
    QString text;
};

/// Rows with a number (column 0) and a text (column 1) each.
class RecordRowsTest : public testing::Test
{
protected:
    int add(int number, const QString &text, quint64 identity = 0)
    {
        const RecordRow *row = rows.add(identity);
        values[row->id] = {number, text};
        return row->id;
    }

    std::string shown()
    {
        std::string text;
        for (const RecordRow *row : rows.shown())
            text += std::to_string(row->id) + ' ';
        return text;
    }

    std::map<int, Values> values;
    RecordRows rows{[this](const RecordRow &row, int column, bool descending) {
        const Values &of = values[row.id];
        if (column == 1)
            return ZB::RecordSortKey{core::SortKey::ofText(of.text, descending), of.text};
        return ZB::RecordSortKey{core::SortKey::ofInteger(of.number, descending), QString()};
    }};
};

} // namespace

TEST_F(RecordRowsTest, IdsStayAndAreNotGivenTwiceBeforeAClear)
{
    add(1, "a");
    add(2, "b");
    EXPECT_TRUE(rows.remove(0));
    EXPECT_FALSE(rows.remove(0));
    EXPECT_FALSE(rows.remove(-1));
    EXPECT_EQ(add(3, "c"), 2);
    EXPECT_EQ(shown(), "1 2 ");
    EXPECT_EQ(rows.find(0), nullptr);
    EXPECT_EQ(rows.find(1)->id, 1);
    rows.clear();
    EXPECT_EQ(rows.count(), 0);
    EXPECT_EQ(rows.find(1), nullptr);
    EXPECT_EQ(add(4, "d"), 0);
}

TEST_F(RecordRowsTest, ARowIsKnownAgainByItsIdentityAfterAClear)
{
    add(1, "a", 77);
    const ZB::GridRowId before = rows.find(0)->gridId;
    rows.clear();
    add(5, "x");
    add(1, "a", 77);
    EXPECT_EQ(rows.find(1)->gridId, before);
    EXPECT_EQ(rows.placeOf(before), 1);
    add(2, "b", 77);
    EXPECT_NE(rows.find(2)->gridId, before) << "two rows never share one";
    EXPECT_EQ(rows.findOnScreen(before)->id, 1);
}

TEST_F(RecordRowsTest, ARowThatSomebodyHoldsOverAClearIsNotGivenAgain)
{
    add(1, "a");
    add(2, "b");
    rows.setSorts({{0, 1}});
    EXPECT_EQ(shown(), "1 0 ");
    const ZB::RecordRowPtr held = rows.find(0)->shared_from_this();
    held->cell(0).text = "on the screen";
    const QByteArray kept(100, 'x');
    rows.find(1)->cell(0).value = kept;
    rows.clear();
    EXPECT_TRUE(kept.isDetached()) << "what was in a cell goes with its row";
    rows.setSorts({});
    for (int i = 0; i < 3; ++i)
        add(5 - i, "x");
    EXPECT_TRUE(held->gone);
    EXPECT_EQ(held->cell(0).text, "on the screen");
    EXPECT_EQ(shown(), "0 1 2 ");
    for (int id = 0; id < 3; ++id) {
        EXPECT_NE(rows.peek(id), held.get());
        EXPECT_FALSE(rows.isKnown(id));
        EXPECT_TRUE(rows.find(id)->cells.empty() && !rows.find(id)->gone) << id;
    }
}

TEST_F(RecordRowsTest, TextsWithTheSameBeginningAreToldApartInBothDirections)
{
    for (const char *text : {"longer b", "longer a", "long", "longer"})
        add(0, text);
    rows.setSorts({{1, 0}});
    EXPECT_EQ(shown(), "2 3 1 0 ");
    rows.setSorts({{1, 1}});
    EXPECT_EQ(shown(), "0 1 3 2 ");
}

TEST_F(RecordRowsTest, TheOrderIsThatOfAStableSortAfterAnySequence)
{
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    const auto below = [&random](int end) { return static_cast<int>(random() % static_cast<unsigned>(end)); };
    const auto anyText = [&below] { return QString("aaaa") + QChar('a' + below(4)); };
    std::vector<int> plain; // ids in the order in which they came
    RecordRows::Sorts sorts;
    for (int step = 0; step < 3000; ++step) {
        const int action = below(20);
        if (action < 8 || plain.empty()) {
            plain.push_back(add(below(9), anyText()));
        } else if (action < 14) {
            const int id = plain[static_cast<std::size_t>(below(static_cast<int>(plain.size())))];
            values[id] = {below(9), anyText()};
            rows.touch(*rows.find(id));
        } else if (action < 18) {
            const int at = below(static_cast<int>(plain.size()));
            rows.remove(plain[static_cast<std::size_t>(at)]);
            plain.erase(plain.begin() + at);
        } else if (action == 18) {
            const RecordRows::Sorts choices[] = {{}, {{0, 0}}, {{1, 1}, {0, 0}}, {{0, 1}, {1, 0}}};
            sorts = choices[below(4)];
            rows.setSorts(sorts);
        } else if (below(20) == 0) {
            rows.clear();
            plain.clear();
        }
        if (below(3) != 0)
            continue;
        std::vector<int> sorted = plain;
        std::stable_sort(sorted.begin(), sorted.end(), [this, &sorts](int a, int b) {
            for (const auto &[column, order] : sorts) {
                const Values &first = values[order ? b : a];
                const Values &second = values[order ? a : b];
                if (column == 0 && first.number != second.number)
                    return first.number < second.number;
                if (column == 1 && first.text != second.text)
                    return first.text < second.text;
            }
            return false;
        });
        std::string expected;
        for (const int id : sorted)
            expected += std::to_string(id) + ' ';
        ASSERT_EQ(shown(), expected) << "step " << step;
        for (std::size_t place = 0; place < sorted.size(); ++place)
            ASSERT_EQ(rows.placeOf(rows.find(sorted[place])->gridId), static_cast<int>(place));
    }
}
