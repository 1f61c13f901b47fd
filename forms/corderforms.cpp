#include "corderforms.h"

#include "order/cautobutton.h"
#include "order/coptypebutton.h"
#include "order/cquotespriceslist.h"

namespace KV {

CLadderForm::CLadderForm(QWidget *parent) : CFormControl(parent) {}

CLadderForm::~CLadderForm() = default;

CQuotesPricesList *CLadderForm::ladder() const
{
    return static_cast<CQuotesPricesList *>(heldControl());
}

void CLadderForm::setQuoteType(int quoteType)
{
    layoutType = quoteType;
    renew();
}

QWidget *CLadderForm::makeControl()
{
    auto *made = new CQuotesPricesList(static_cast<EOpParamWidgetID>(eventId()), this);
    made->setQuoteType(static_cast<EQuoteType>(layoutType));
    return made;
}

COperationForm::COperationForm(QWidget *parent) : CFormControl(parent) {}

COperationForm::~COperationForm() = default;

COpTypeButton *COperationForm::button() const
{
    return static_cast<COpTypeButton *>(heldControl());
}

void COperationForm::setFieldId(int fieldId)
{
    field = fieldId;
    renew();
}

QWidget *COperationForm::makeControl()
{
    return new COpTypeButton(eventId(), static_cast<EOpParamWidgetID>(field), this);
}

CGuardedButtonForm::CGuardedButtonForm(QWidget *parent) : CFormControl(parent) {}

CGuardedButtonForm::~CGuardedButtonForm() = default;

CAutoButton *CGuardedButtonForm::button() const
{
    return static_cast<CAutoButton *>(heldControl());
}

void CGuardedButtonForm::setText(const QString &text)
{
    label = text;
    renew();
}

void CGuardedButtonForm::setInterval(int milliseconds)
{
    pause = milliseconds;
    renew();
}

QWidget *CGuardedButtonForm::makeControl()
{
    auto *made = new CAutoButton(eventId(), true, ZB::NormalButtonRaised, this, pause);
    made->setText(label);
    return made;
}

} // namespace KV
