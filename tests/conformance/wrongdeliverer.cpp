// Events as a host should not deliver them: twice to everybody, and on when their sender is no more.

#include "zb/ceventdeliverer.h"

#include <QtCore/QPointer>
#include <QtWidgets/QWidget>
#include <vector>

namespace ZB {

class CEventDeliverer::Life
{
};

CEventDeliverer::CEventDeliverer(CEventDeliverer *) : life(nullptr), parentLife(nullptr) {}

CEventDeliverer::~CEventDeliverer() = default;

bool CEventDeliverer::handleEvent(int, int, int, QString, void *)
{
    return false;
}

bool CEventDeliverer::deliverEvent(int event, int first, int second, QString text, void *data)
{
    std::vector<QPointer<QWidget>> stops;
    for (auto *widget = dynamic_cast<QWidget *>(this); widget; widget = widget->parentWidget())
        stops.emplace_back(widget);
    for (int time = 0; time < 2; ++time)
        for (const QPointer<QWidget> &stop : stops) {
            auto *listener = dynamic_cast<CEventDeliverer *>(stop.data());
            if (listener && listener->handleEvent(event, first, second, text, data))
                return false;
        }
    return false;
}

} // namespace ZB
