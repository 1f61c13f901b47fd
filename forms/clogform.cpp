#include "clogform.h"

#include "log/chpflogwidget.h"

namespace KV {

CLogForm::CLogForm(QWidget *parent) : CFormControl(parent) {}

CLogForm::~CLogForm() = default;

CHpfLogWidget *CLogForm::log() const
{
    return static_cast<CHpfLogWidget *>(heldControl());
}

QWidget *CLogForm::makeControl()
{
    return new CHpfLogWidget(eventId(), this);
}

} // namespace KV
