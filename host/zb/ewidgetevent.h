#pragma once

namespace ZB {

/// Events of the host's buttons, boxes and fields; the first integer is the control's id. Only what the user does is
/// told, never what a caller sets. Tables, code fields and scroll bars have events of their own, told in their headers;
/// a table's 69 is another one than a check box's.
enum EWidgetEvent : int
{
    EventClicked = 5,          ///< a push button was clicked; second: 1 when it is checked now
    EventRadioChosen = 6,      ///< a button of a radio group was clicked; second: its id, or -1 when it was let go
    EventItemChosen = 7,       ///< an item of a drop-down button was picked; second: its index, text: its text
    EventChecked = 69,         ///< a check box has changed; second: 1 checked, 0 not
    EventParameterEdited = 119 ///< the text of a parameter cell was edited; text: what it is now
};

} // namespace ZB
