#include "desk/ownpositionspanel.h"

#include "window/tableids.h"

namespace terminal {

namespace {

constexpr int activatedEvent = 69;

} // namespace

OwnPositionsPanel::OwnPositionsPanel(QWidget *parent) : PositionsPanel(OwnPositionsTable, parent, /* hasFutures */ true)
{
}

OwnPositionsPanel::~OwnPositionsPanel() = default;

bool OwnPositionsPanel::handleEvent(int event, int, int, QString text, void *)
{
    if (event != activatedEvent)
        return false;
    // Account, code, side; an account may have a stroke in its name.
    const int side = text.lastIndexOf(QLatin1Char('/'));
    const int code = side > 0 ? text.lastIndexOf(QLatin1Char('/'), side - 1) : -1;
    if (code > 0 && text.size() == side + 2)
        Q_EMIT activated(text.left(code), text.mid(code + 1, side - code - 1),
                         static_cast<trading::PositionSide>(text.back().toLatin1()));
    return true;
}

} // namespace terminal
