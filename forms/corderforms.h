#pragma once

#include "cformcontrol.h"

namespace KV {

class CAutoButton;
class COpTypeButton;
class CQuotesPricesList;

/// A price ladder on a form; `eventId` is its KV::EOpParamWidgetID.
class FORMS_API CLadderForm : public CFormControl
{
    Q_OBJECT
    /// A KV::EQuoteType: 0 vertical, 1 horizontal, 2 ordinary.
    Q_PROPERTY(int quoteType READ quoteType WRITE setQuoteType)

public:
    explicit CLadderForm(QWidget *parent = nullptr);
    ~CLadderForm() override;

    CQuotesPricesList *ladder() const;

    int quoteType() const { return layoutType; }
    void setQuoteType(int quoteType);

protected:
    QWidget *makeControl() override;

private:
    int layoutType = 2;
};

/// A button that shows and changes the direction of an order, on a form.
class FORMS_API COperationForm : public CFormControl
{
    Q_OBJECT
    /// The KV::EOpParamWidgetID, which decides the words.
    Q_PROPERTY(int fieldId READ fieldId WRITE setFieldId)

public:
    explicit COperationForm(QWidget *parent = nullptr);
    ~COperationForm() override;

    COpTypeButton *button() const;

    int fieldId() const { return field; }
    void setFieldId(int fieldId);

protected:
    QWidget *makeControl() override;

private:
    int field = 1;
};

/// A button that guards against repeated clicks, on a form.
class FORMS_API CGuardedButtonForm : public CFormControl
{
    Q_OBJECT
    Q_PROPERTY(QString text READ text WRITE setText)
    /// Milliseconds for which it is disabled after a click.
    Q_PROPERTY(int interval READ interval WRITE setInterval)

public:
    explicit CGuardedButtonForm(QWidget *parent = nullptr);
    ~CGuardedButtonForm() override;

    CAutoButton *button() const;

    QString text() const { return label; }
    void setText(const QString &text);
    int interval() const { return pause; }
    void setInterval(int milliseconds);

protected:
    QWidget *makeControl() override;

private:
    QString label;
    int pause = 1000;
};

} // namespace KV
