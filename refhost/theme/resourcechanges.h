#pragma once

#include <vector>

namespace ZB {
class CUiResourceChangeHandler;
}

namespace refhost {

/// Who wants to hear of theme and scale changes, in the order in which they came. Handlers may come and go while a
/// change is told; one that comes then is not told of it, since it has seen the new values. GUI thread.
class ResourceChanges
{
public:
    static ResourceChanges &instance();

    void add(ZB::CUiResourceChangeHandler *handler);
    void remove(ZB::CUiResourceChangeHandler *handler);
    void notify(bool scaleChanged);

private:
    std::vector<ZB::CUiResourceChangeHandler *> handlers; ///< null for one that went while a change was told
    int telling = 0;
};

} // namespace refhost
