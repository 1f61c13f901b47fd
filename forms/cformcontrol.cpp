#include "cformcontrol.h"

#include <QtCore/QEvent>
#include <QtWidgets/QVBoxLayout>

namespace KV {

CFormControl::CFormControl(QWidget *parent) : QWidget(parent)
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
}

CFormControl::~CFormControl() = default;

void CFormControl::setEventId(int eventId)
{
    if (eventId == id)
        return;
    id = eventId;
    renew();
}

QSize CFormControl::sizeHint() const
{
    return heldControl()->sizeHint();
}

QWidget *CFormControl::heldControl() const
{
    if (!held)
        make();
    return held;
}

void CFormControl::renew()
{
    if (!held)
        return;
    delete held;
    held = nullptr;
    make();
    held->show();
}

bool CFormControl::event(QEvent *event)
{
    if (event->type() == QEvent::Polish && !held)
        make();
    return QWidget::event(event);
}

/// A control that is not there yet is no state of its holder that anybody could tell.
void CFormControl::make() const
{
    auto *self = const_cast<CFormControl *>(this);
    held = self->makeControl();
    self->layout()->addWidget(held);
    self->setFocusProxy(held);
}

} // namespace KV
