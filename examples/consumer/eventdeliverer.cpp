// Host events: up the chain of parents until somebody deals with them.

#include "zb/ceventdeliverer.h"

#include <QtWidgets/QWidget>
#include <memory>
#include <vector>

namespace ZB {

/// Tells a running trip whether a deliverer is still there.
class CEventDeliverer::Life
{
public:
    std::shared_ptr<CEventDeliverer *> self;
};

CEventDeliverer::CEventDeliverer(CEventDeliverer *parent)
    : life(new Life{std::make_shared<CEventDeliverer *>(this)}),
      parentLife(parent ? new Life{parent->life->self} : nullptr)
{
}

CEventDeliverer::~CEventDeliverer()
{
    *life->self = nullptr;
    delete life;
    delete parentLife;
}

bool CEventDeliverer::handleEvent(int, int, int, QString, void *)
{
    return false;
}

bool CEventDeliverer::deliverEvent(int event, int first, int second, QString text, void *data)
{
    std::vector<std::shared_ptr<CEventDeliverer *>> stops;
    for (CEventDeliverer *stop = this; stop;) {
        stops.push_back(stop->life->self);
        if (stop->handleEvent(event, first, second, text, data))
            return true;
        for (const auto &passed : stops)
            if (!*passed)
                return false;
        CEventDeliverer *next = nullptr;
        for (auto *widget = dynamic_cast<QWidget *>(stop); widget && !next;) {
            widget = widget->parentWidget();
            next = dynamic_cast<CEventDeliverer *>(widget);
        }
        stop = !next && stop->parentLife ? *stop->parentLife->self : next;
    }
    return false;
}

} // namespace ZB
