#include "rows/keyindex.h"

#include <gtest/gtest.h>
#include <map>
#include <random>
#include <string>

#include "rows/rowslots.h"

using KeyIndex = core::KeyIndex<>;
using RowSlots = core::RowSlots<int>;

namespace {

quint64 allTheSame(const std::string &)
{
    return 42;
}

quint64 byLength(const std::string &key)
{
    return key.size() << 58 | key.size();
}

quint64 wellSpread(const std::string &key)
{
    return std::hash<std::string>()(key) * 0x9E3779B97F4A7C15ull;
}

std::string randomKey(std::mt19937_64 &random)
{
    // Up to 23 bytes stand beside the hash, longer ones elsewhere.
    std::string key(random() % 4 == 0 ? 21 + random() % 5 : random() % 12, 'k');
    for (char &letter : key)
        letter = static_cast<char>('a' + random() % 3);
    return random() % 50 == 0 ? key + std::string(random() % 90000, '\0') : key;
}

} // namespace

TEST(KeyIndex, TellsKeysOfOneHashApart)
{
    const quint64 seed = std::random_device()();
    SCOPED_TRACE(seed);
    for (const auto hashOf : {allTheSame, byLength, wellSpread}) {
        std::mt19937_64 random(seed);
        RowSlots slots;
        std::map<std::string, quint64> idOfKey;
        std::vector<quint64> goneIds;
        for (int step = 0; step < 4000; ++step) {
            const std::string key = randomKey(random);
            const quint64 hash = hashOf(key);
            const quint32 slot = slots.find(key, hash);
            const auto known = idOfKey.find(key);
            ASSERT_EQ(slot != RowSlots::noSlot, known != idOfKey.end()) << "step " << step;
            if (known == idOfKey.end()) {
                const quint32 added = slots.add(key, hash);
                ASSERT_EQ(slots.find(key, hash), added);
                idOfKey[key] = slots.idOf(added);
            } else if (random() % 3 != 0) {
                ASSERT_EQ(slots.slotOf(known->second), slot);
                slots.remove(slot);
                goneIds.push_back(known->second);
                idOfKey.erase(known);
            }
            ASSERT_EQ(slots.size(), static_cast<int>(idOfKey.size()));
            if (step % 500 == 0) {
                ASSERT_TRUE(slots.checkConsistency()) << "step " << step;
            }
        }
        for (const auto &[key, id] : idOfKey)
            ASSERT_EQ(slots.slotOf(id), slots.find(key, hashOf(key)));
        for (const quint64 id : goneIds)
            ASSERT_EQ(slots.slotOf(id), RowSlots::noSlot);
    }
}

TEST(KeyIndex, IdsOfAClearedTableAreUnknownInTheNextOne)
{
    RowSlots before;
    const quint64 id = before.idOf(before.add("a", 1));
    RowSlots after(before.lastGeneration());
    const quint32 slot = after.add("a", 1);
    EXPECT_EQ(after.slotOf(id), RowSlots::noSlot);
    EXPECT_EQ(after.slotOf(after.idOf(slot)), slot);
    EXPECT_EQ(after.slotOf(0), RowSlots::noSlot);
    EXPECT_EQ(after.slotOf(~quint64(0)), RowSlots::noSlot);
}

TEST(KeyIndex, HoldsAHundredThousandKeys)
{
    KeyIndex index;
    for (quint32 i = 0; i < 100000; ++i)
        index.insert("SSE|600519|" + std::to_string(i), wellSpread("SSE|600519|" + std::to_string(i)), i);
    for (quint32 i = 0; i < 100000; i += 3)
        index.remove(i);
    EXPECT_TRUE(index.checkConsistency());
    EXPECT_EQ(index.size(), 66666);
    EXPECT_EQ(index.find("SSE|600519|99998", wellSpread("SSE|600519|99998")), 99998u);
    EXPECT_EQ(index.find("SSE|600519|99999", wellSpread("SSE|600519|99999")), KeyIndex::noSlot);
    EXPECT_EQ(index.keyOf(77777), "SSE|600519|77777");
    EXPECT_EQ(index.findHash(wellSpread("SSE|600519|99998")), 99998u);
    EXPECT_EQ(index.findHash(wellSpread("SSE|600519|99999")), KeyIndex::noSlot);
}
