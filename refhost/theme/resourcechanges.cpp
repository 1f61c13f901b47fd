#include "theme/resourcechanges.h"

#include <algorithm>

#include "zb/cuiresourcechangehandler.h"

namespace refhost {

ResourceChanges &ResourceChanges::instance()
{
    static ResourceChanges *changes = new ResourceChanges; // never destroyed: static widgets may outlive it
    return *changes;
}

void ResourceChanges::add(ZB::CUiResourceChangeHandler *handler)
{
    handlers.push_back(handler);
}

void ResourceChanges::remove(ZB::CUiResourceChangeHandler *handler)
{
    // From the end: what was made last mostly goes first.
    const auto found = std::find(handlers.rbegin(), handlers.rend(), handler);
    if (found == handlers.rend())
        return;
    if (telling > 0)
        *found = nullptr;
    else
        handlers.erase(std::next(found).base());
}

void ResourceChanges::notify(bool scaleChanged)
{
    ++telling;
    const std::size_t count = handlers.size();
    for (std::size_t index = 0; index < count; ++index) {
        if (handlers[index] == nullptr)
            continue;
        if (scaleChanged)
            handlers[index]->scaleChanged();
        else
            handlers[index]->themeChanged();
    }
    if (--telling == 0)
        handlers.erase(std::remove(handlers.begin(), handlers.end(), nullptr), handlers.end());
}

} // namespace refhost

namespace ZB {

CUiResourceChangeHandler::CUiResourceChangeHandler()
{
    refhost::ResourceChanges::instance().add(this);
}

CUiResourceChangeHandler::~CUiResourceChangeHandler()
{
    refhost::ResourceChanges::instance().remove(this);
}

void CUiResourceChangeHandler::themeChanged() {}

void CUiResourceChangeHandler::scaleChanged()
{
    themeChanged();
}

} // namespace ZB
