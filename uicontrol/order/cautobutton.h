#pragma once

#include "uicontrolexport.h"
#include "zb/csmallnormalbutton.h"

namespace KV {

/// A button that guards against repeated clicks: it passes one click on, is disabled from before that until an interval
/// is over, and enabled then, whoever may have disabled it meanwhile. GUI thread.
class UICONTROL_API CAutoButton : public ZB::CSmallNormalButton
{
    Q_OBJECT

public:
    /// interval: milliseconds; 0 and below enable it at the next turn of the event loop.
    CAutoButton(int eventId, bool framed, ZB::ENormalButtonType type, QWidget *parent, int interval);
    ~CAutoButton() override;

    /// From the next click on.
    void setInterval(int milliseconds);

protected Q_SLOTS:
    void slotClicked(bool isChecked) override;
    void slotTimeout();

private:
    int interval;
};

} // namespace KV
