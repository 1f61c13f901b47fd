#include "desk/ownpositionspanel.h"

#include <QtCore/QStringList>

#include "window/tableids.h"

namespace terminal {

namespace {

constexpr int activatedEvent = 69;

} // namespace

OwnPositionsPanel::OwnPositionsPanel(QWidget *parent) : PositionsPanel(OwnPositionsTable, parent) {}

OwnPositionsPanel::~OwnPositionsPanel() = default;

bool OwnPositionsPanel::handleEvent(int event, int, int, QString text, void *)
{
    if (event != activatedEvent)
        return false;
    const QStringList parts = text.split(QLatin1Char('/')); // account, code, side
    if (parts.size() == 3 && parts[2].size() == 1)
        Q_EMIT activated(parts[0], parts[1], static_cast<trading::PositionSide>(parts[2][0].toLatin1()));
    return true;
}

} // namespace terminal
