#pragma once

#include "hostexport.h"

namespace ZB {

/// Hears of theme and scale changes for as long as it lives. GUI thread. Called after every resource has its new value;
/// in the order in which the handlers were made.
class HOST_API CUiResourceChangeHandler
{
public:
    CUiResourceChangeHandler();
    virtual ~CUiResourceChangeHandler();

    CUiResourceChangeHandler(const CUiResourceChangeHandler &) = delete;
    CUiResourceChangeHandler &operator=(const CUiResourceChangeHandler &) = delete;

    /// Colours, fonts or images have changed. Does nothing unless overridden.
    virtual void themeChanged();
    /// Sizes, fonts and images have changed. Calls themeChanged() unless overridden.
    virtual void scaleChanged();
};

} // namespace ZB
