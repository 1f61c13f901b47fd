#include "order/cautobutton.h"

#include <QtCore/QTimer>
#include <algorithm>

namespace KV {

CAutoButton::CAutoButton(int eventId, bool framed, ZB::ENormalButtonType type, QWidget *parent, int intervalMs)
    : ZB::CSmallNormalButton(eventId, framed, type, parent), interval(intervalMs)
{
}

CAutoButton::~CAutoButton()
{
    disconnect();
}

void CAutoButton::setInterval(int milliseconds)
{
    interval = milliseconds;
}

/// Disabled first, so that nothing that the click brings about can click again.
void CAutoButton::slotClicked(bool isChecked)
{
    setEnabled(false);
    QTimer::singleShot(std::max(interval, 0), this, &CAutoButton::slotTimeout);
    ZB::CSmallNormalButton::slotClicked(isChecked);
}

void CAutoButton::slotTimeout()
{
    setEnabled(true);
}

} // namespace KV
