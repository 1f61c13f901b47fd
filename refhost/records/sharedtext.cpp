#include "records/sharedtext.h"

#include <mutex>
#include <unordered_set>

namespace refhost {

namespace {

struct Pool
{
    std::mutex mutex;
    std::unordered_set<std::string> texts;
};

} // namespace

const std::string *sharedText(const std::string &text)
{
    // Never destroyed: records may be read by threads that outlive main().
    static Pool *pool = new Pool;
    const std::lock_guard<std::mutex> lock(pool->mutex);
    return &*pool->texts.insert(text).first;
}

} // namespace refhost
