#include "desk/desksounds.h"

#include <utility>

namespace terminal {

namespace {

constexpr int betweenTones = 200; ///< milliseconds, long enough that the system's sound is heard twice
constexpr int afterLastTone = 700;

} // namespace

DeskSounds::DeskSounds(std::function<void()> toneMaker) : tone(std::move(toneMaker))
{
    rest.setSingleShot(true);
    connect(&rest, &QTimer::timeout, this, &DeskSounds::goOn);
}

DeskSounds::~DeskSounds() = default;

void DeskSounds::play(bool isFill)
{
    (isFill ? isFillWaiting : isRejectWaiting) = true;
    if (!rest.isActive())
        goOn();
}

void DeskSounds::goOn()
{
    if (tonesLeft == 0) {
        if (std::exchange(isRejectWaiting, false))
            tonesLeft = 2;
        else if (std::exchange(isFillWaiting, false))
            tonesLeft = 1;
        else
            return;
    }
    --tonesLeft;
    rest.start(tonesLeft > 0 ? betweenTones : afterLastTone);
    tone();
}

} // namespace terminal
