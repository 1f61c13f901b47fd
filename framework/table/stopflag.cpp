#include "table/stopflag.h"

namespace ZB {

bool StopFlag::stop()
{
    return settle(State::Stopped);
}

bool StopFlag::commit()
{
    return settle(State::Committed);
}

bool StopFlag::settle(State wanted)
{
    State found = State::Running;
    return state.compare_exchange_strong(found, wanted) || found == wanted;
}

} // namespace ZB
