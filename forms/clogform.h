#pragma once

#include "cformcontrol.h"

namespace KV {

class CHpfLogWidget;

/// A log viewer on a form.
class FORMS_API CLogForm : public CFormControl
{
    Q_OBJECT

public:
    explicit CLogForm(QWidget *parent = nullptr);
    ~CLogForm() override;

    CHpfLogWidget *log() const;

protected:
    QWidget *makeControl() override;
};

} // namespace KV
