#pragma once

namespace ZB {

/// Events that the host's own controls deliver; the first integer is always the control's id. Only what the user does
/// is told, never what a caller sets.
enum EWidgetEvent : int
{
    EventClicked = 5,          ///< a push button was clicked; second: 1 when it is checked now
    EventRadioChosen = 6,      ///< a button of a radio group was clicked; second: its id, or -1 when it was let go
    EventItemChosen = 7,       ///< an item of a drop-down button was picked; second: its index, text: its text
    EventChecked = 69,         ///< a check box has changed; second: 1 checked, 0 not
    EventParameterEdited = 119 ///< the text of a parameter cell was edited; text: what it is now
};

} // namespace ZB
