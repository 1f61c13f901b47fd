#include "rows/pointerindex.h"

#include <gtest/gtest.h>
#include <map>
#include <random>

TEST(PointerIndex, FindsWhatIsThereAndNothingElseWhateverTheHashes)
{
    const quint64 seed = std::random_device()();
    SCOPED_TRACE(seed);
    using Hash = quint64 (*)(int);
    const Hash hashes[] = {[](int) { return quint64(7); }, [](int key) { return quint64(key % 5) << 40 | 15; },
                           [](int key) { return static_cast<quint64>(key) * 0x9E3779B97F4A7C15ull; }};
    for (const Hash hashOf : hashes) {
        std::mt19937_64 random(seed);
        std::map<int, int> keys; // stay where they are
        core::PointerIndex<int> index;
        const auto find = [&](int key) { return index.find(hashOf(key), [key](int found) { return found == key; }); };
        for (int step = 0; step < 3000; ++step) {
            const int key = static_cast<int>(random() % 200);
            const auto known = keys.find(key);
            ASSERT_EQ(find(key), known == keys.end() ? nullptr : &known->second) << "step " << step;
            const int *likely = index.likely(hashOf(key));
            ASSERT_TRUE(likely ? hashOf(*likely) == hashOf(key) : known == keys.end()) << "step " << step;
            if (known == keys.end()) {
                index.insert(hashOf(key), &keys.emplace(key, key).first->second);
            } else if (random() % 2 == 0) {
                index.remove(hashOf(key), &known->second);
                keys.erase(known);
            }
            ASSERT_EQ(index.size(), static_cast<int>(keys.size()));
        }
        for (auto &[key, kept] : keys)
            ASSERT_EQ(find(key), &kept);
        index.clear();
        ASSERT_EQ(find(keys.begin()->first), nullptr);
        ASSERT_EQ(index.likely(hashOf(keys.begin()->first)), nullptr);
    }
}
