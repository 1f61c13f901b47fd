#pragma once

#include <utility>

#include "zb/ceventdeliverer.h"

namespace ZB {

/// A Qt widget class that takes part in host events.
template <typename WidgetBase>
class CEventWidgetT : public WidgetBase, public CEventDeliverer
{
public:
    template <typename... Arguments>
    explicit CEventWidgetT(Arguments &&...arguments) : WidgetBase(std::forward<Arguments>(arguments)...)
    {
    }
};

} // namespace ZB
