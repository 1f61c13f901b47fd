#include "rows/notedchanges.h"

#include <gtest/gtest.h>

using core::Arrangement;
using core::NotedChanges;
using core::RowValues;
using core::RowView;
using core::SortKey::ofInteger;

namespace {

Arrangement byInteger()
{
    Arrangement arrangement;
    arrangement.sort = {{core::ValueKind::Integer, false}};
    arrangement.sums = {core::ValueKind::Integer};
    return arrangement;
}

RowValues valueOf(qint64 value)
{
    RowValues values;
    values.sortKeys.append(ofInteger(value, false));
    values.sums.append(static_cast<quint64>(value));
    return values;
}

std::string slotsOf(const RowView &view)
{
    std::vector<quint32> slots;
    view.rows().copySlots(slots);
    std::string result;
    for (const quint32 slot : slots)
        result += std::to_string(slot) + ' ';
    return result;
}

} // namespace

TEST(NotedChanges, TheLatestChangeOfARowCountsWhenItIsBroughtIn)
{
    RowView view(byInteger());
    for (quint32 slot = 0; slot < 4; ++slot)
        view.add(slot, slot, valueOf(10 * slot));
    NotedChanges changes;
    changes.noteChange(0, 0, valueOf(50));
    changes.noteChange(0, 0, valueOf(25));
    changes.noteChange(9, 9, valueOf(5));
    changes.noteRemoval(1);
    changes.noteChange(8, 8, valueOf(1));
    changes.noteRemoval(8);
    EXPECT_EQ(changes.slots().size(), 4u);
    EXPECT_EQ(slotsOf(view), "0 1 2 3 ");
    changes.follow(view);
    EXPECT_TRUE(changes.applySome(10));
    EXPECT_EQ(slotsOf(view), "9 2 0 3 ");
    EXPECT_EQ(view.sum(0).toInteger(), 80);
    EXPECT_TRUE(view.checkConsistency());
}

TEST(NotedChanges, ASlotThatWasGivenToAnotherRowTakesItsArrival)
{
    RowView view(byInteger());
    for (quint32 slot = 0; slot < 3; ++slot)
        view.add(slot, slot, valueOf(7));
    NotedChanges changes;
    changes.noteRemoval(0);
    changes.noteChange(0, 3, valueOf(7));
    changes.follow(view);
    EXPECT_TRUE(changes.applySome(1));
    EXPECT_EQ(slotsOf(view), "1 2 0 ");
}

TEST(NotedChanges, AChangeNeverOvertakesAnOlderOneOfTheSameRow)
{
    RowView view(byInteger());
    NotedChanges changes;
    for (quint32 slot = 0; slot < 10; ++slot)
        changes.noteChange(slot, slot, valueOf(slot));
    changes.follow(view);
    EXPECT_FALSE(changes.applySome(4));
    EXPECT_EQ(view.rows().size(), 4);
    // Some rows are in the view and some still wait; all of them change or go.
    for (quint32 slot = 0; slot < 10; ++slot) {
        if (slot % 5 == 0)
            changes.noteRemoval(slot);
        else
            changes.noteChange(slot, slot, valueOf(100 - slot));
    }
    changes.noteChange(20, 20, valueOf(0));
    EXPECT_EQ(view.rows().indexOf(20), 0) << "a row that does not wait goes straight to the view";
    while (!changes.applySome(1)) {
    }
    EXPECT_EQ(slotsOf(view), "20 9 8 7 6 4 3 2 1 ");
    EXPECT_TRUE(view.checkConsistency());
}
