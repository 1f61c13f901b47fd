#include <QtWidgets/QWidget>
#include <vector>

#include "zb/ceventdeliverer.h"

namespace ZB {

/// Outlives its deliverer for as long as somebody asks whether that is still there. GUI thread only, so a plain count
/// does.
class CEventDeliverer::Life
{
public:
    explicit Life(CEventDeliverer *deliverer) : owner(deliverer) {}

    static Life *take(Life *life)
    {
        if (life != nullptr)
            ++life->holders;
        return life;
    }
    static void release(Life *life)
    {
        if (life != nullptr && --life->holders == 0)
            delete life;
    }

    CEventDeliverer *owner; ///< null once it is gone
    int holders = 1;

    /// The deliverers that a trip has come by, the sender first.
    class Trip
    {
    public:
        Trip() = default;
        ~Trip()
        {
            for (Life *life : stops)
                release(life);
        }
        Q_DISABLE_COPY(Trip)

        void comeBy(Life *life) { stops.push_back(take(life)); }
        bool somebodyIsGone() const
        {
            for (const Life *life : stops)
                if (life->owner == nullptr)
                    return true;
            return false;
        }

    private:
        std::vector<Life *> stops;
    };
};

namespace {

CEventDeliverer *nextInWindow(CEventDeliverer *deliverer)
{
    auto *widget = dynamic_cast<QWidget *>(deliverer);
    while (widget != nullptr) {
        widget = widget->parentWidget();
        if (auto *next = dynamic_cast<CEventDeliverer *>(widget))
            return next;
    }
    return nullptr;
}

} // namespace

CEventDeliverer::CEventDeliverer(CEventDeliverer *parent)
    : life(new Life(this)), parentLife(parent == nullptr ? nullptr : Life::take(parent->life))
{
}

CEventDeliverer::~CEventDeliverer()
{
    life->owner = nullptr;
    Life::release(life);
    Life::release(parentLife);
}

bool CEventDeliverer::handleEvent(int, int, int, QString, void *)
{
    return false;
}

bool CEventDeliverer::deliverEvent(int event, int first, int second, QString text, void *data)
{
    Life::Trip trip;
    for (CEventDeliverer *stop = this; stop != nullptr;) {
        trip.comeBy(stop->life);
        if (stop->handleEvent(event, first, second, text, data))
            return true;
        if (trip.somebodyIsGone())
            return false;
        CEventDeliverer *next = nextInWindow(stop);
        stop = next == nullptr && stop->parentLife != nullptr ? stop->parentLife->owner : next;
    }
    return false;
}

} // namespace ZB
