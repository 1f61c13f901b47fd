#pragma once

#include <QtCore/QString>

#include "hostexport.h"

namespace ZB {

/// Sends and hears host events: an event id, two integers, a text and a pointer that stays the sender's.
///
/// A trip starts at the deliverer itself and goes on up its chain of parents (for a widget, every QWidget ancestor that
/// is a deliverer; windows included); the first handleEvent that returns true ends it. A handler may destroy anyone on
/// the way, the sender included: the trip then ends. GUI thread.
class HOST_API CEventDeliverer
{
public:
    /// parent: where the trip goes on for a deliverer that is no widget; may be null.
    explicit CEventDeliverer(CEventDeliverer *parent = nullptr);
    virtual ~CEventDeliverer();

    CEventDeliverer(const CEventDeliverer &) = delete;
    CEventDeliverer &operator=(const CEventDeliverer &) = delete;

    /// True when the event is dealt with. Passes on (false) unless overridden.
    virtual bool handleEvent(int event, int first, int second, QString text, void *data);
    /// Sends an event on its trip; true when somebody dealt with it.
    bool deliverEvent(int event, int first, int second, QString text, void *data);

private:
    class Life;
    Life *const life; ///< tells running trips, and deliverers whose parent this is, that it is gone
    Life *const parentLife;
};

} // namespace ZB
