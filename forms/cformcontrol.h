#pragma once

#include <QtWidgets/QWidget>

#include "formsexport.h"

namespace KV {

/// Holds one control on a form. Code that is made from a form can give a widget its parent and properties and nothing
/// else, while a control wants its id when it is made: so the control is made from the properties, when it is shown or
/// asked for first, and anew when one of them is set after that.
///
/// Events of the control travel up the chain of parents as ever. GUI thread.
class FORMS_API CFormControl : public QWidget
{
    Q_OBJECT
    /// What the control's events carry.
    Q_PROPERTY(int eventId READ eventId WRITE setEventId)

public:
    ~CFormControl() override;

    int eventId() const { return id; }
    void setEventId(int eventId);

    QSize sizeHint() const override;

protected:
    explicit CFormControl(QWidget *parent);

    /// The control with this one as its parent, made from the present properties.
    virtual QWidget *makeControl() = 0;
    /// Made now, if need be.
    QWidget *heldControl() const;
    /// A property has changed: a control that is there already is replaced.
    void renew();
    bool event(QEvent *event) override;

private:
    void make() const;

    mutable QWidget *held = nullptr;
    int id = 0;
};

} // namespace KV
