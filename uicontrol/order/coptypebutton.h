#pragma once

#include "kv/eopparamwidgetid.h"
#include "uicontrolexport.h"
#include "zb/cpushbutton.h"

namespace KV {

/// Shows the direction of an order and is clicked to change it: long and short for some fields of the ticket, open and
/// close for the others. It does not switch by itself; whoever hears its event 5 does that. GUI thread.
class UICONTROL_API COpTypeButton : public ZB::CPushButton
{
    Q_OBJECT

public:
    /// style: the id that its events carry. id: decides the words; any but those of long and short shows open and
    /// close.
    COpTypeButton(int style, EOpParamWidgetID id, QWidget *parent);
    ~COpTypeButton() override;

    /// isLong: or open, as it is at first. No event.
    void setDirection(bool isLong);
    bool isLong() const;
    void switchDirection();

protected:
    /// Whether the words are those of long and short.
    bool showDirection() const;

private:
    const EOpParamWidgetID widgetId;
    bool longFlag = true;
};

} // namespace KV
