#pragma once

#include <string>
#include <utility>

namespace KV {

/// What one add or update did to the page that is shown: keys of host records, as they yield them. An empty text means
/// that there is no such row; both, one or none may be set. Apply the leaving row first.
struct CUpdatePageDataResult
{
    std::string enterKey; ///< the row to show on the page, or to refresh where it is there already
    std::string leaveKey; ///< the row that is no longer on the page

    CUpdatePageDataResult() = default;
    CUpdatePageDataResult(const CUpdatePageDataResult &) = default;
    CUpdatePageDataResult &operator=(const CUpdatePageDataResult &) = default;
    /// Moving leaves both texts of the source empty, short ones included.
    CUpdatePageDataResult(CUpdatePageDataResult &&other) noexcept
        : enterKey(std::exchange(other.enterKey, {})), leaveKey(std::exchange(other.leaveKey, {}))
    {
    }
    CUpdatePageDataResult &operator=(CUpdatePageDataResult &&other) noexcept
    {
        if (this != &other) {
            enterKey = std::exchange(other.enterKey, {});
            leaveKey = std::exchange(other.leaveKey, {});
        }
        return *this;
    }
    ~CUpdatePageDataResult() = default;
};

} // namespace KV
