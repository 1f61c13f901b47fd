#pragma once

#include "cformcontrol.h"
#include "kdservice/evxtradertype.h"

namespace KV {

class CAccountsComboBox;

/// A combo box over the user's accounts, on a form.
class FORMS_API CAccountsForm : public CFormControl
{
    Q_OBJECT
    /// A kdservice::EVxTraderType: whose accounts are shown.
    Q_PROPERTY(int traderType READ traderType WRITE setTraderType)

public:
    explicit CAccountsForm(QWidget *parent = nullptr);
    ~CAccountsForm() override;

    CAccountsComboBox *comboBox() const;

    int traderType() const { return trader; }
    void setTraderType(int traderType);

protected:
    QWidget *makeControl() override;

private:
    int trader = kdservice::TraderStock;
};

} // namespace KV
