#include "caccountsform.h"

#include "account/caccountscombobox.h"

namespace KV {

CAccountsForm::CAccountsForm(QWidget *parent) : CFormControl(parent) {}

CAccountsForm::~CAccountsForm() = default;

CAccountsComboBox *CAccountsForm::comboBox() const
{
    return static_cast<CAccountsComboBox *>(heldControl());
}

void CAccountsForm::setTraderType(int traderType)
{
    trader = traderType;
    renew();
}

QWidget *CAccountsForm::makeControl()
{
    auto *made = new CAccountsComboBox(eventId(), this);
    made->setTraderType(static_cast<kdservice::EVxTraderType>(trader));
    return made;
}

} // namespace KV
