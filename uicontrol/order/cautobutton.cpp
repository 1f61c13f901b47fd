#include "order/cautobutton.h"

#include <QtCore/QMetaMethod>
#include <QtCore/QTimer>
#include <algorithm>

namespace KV {

CAutoButton::CAutoButton(int eventId, bool framed, ZB::ENormalButtonType type, QWidget *parent, int intervalMs)
    : ZB::CSmallNormalButton(eventId, framed, type, parent), interval(intervalMs)
{
}

/// Cuts every connection from its signals but those of QObject itself: destroyed() has to reach Qt's style sheets,
/// which keep a pointer to every widget that they styled until it comes.
CAutoButton::~CAutoButton()
{
    for (int method = QObject::staticMetaObject.methodCount(); method < metaObject()->methodCount(); ++method) {
        const QMetaMethod signal = metaObject()->method(method);
        if (signal.methodType() == QMetaMethod::Signal)
            disconnect(this, signal, nullptr, QMetaMethod());
    }
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
