#pragma once

#include <QtWidgets/QWidget>

#include "zb/cuiresourcechangehandler.h"

namespace ZB {
class CLineEdit;
class CSmallNormalButton;
} // namespace ZB

namespace terminal {

/// A number that is typed, or changed in steps: with the buttons beside it, the arrow keys and the wheel; ten at a time
/// with Shift or the page keys. GUI thread.
class StepField : public QWidget, public ZB::CUiResourceChangeHandler
{
    Q_OBJECT

public:
    ~StepField() override;

    QString text() const;
    ZB::CLineEdit *edit() const { return field; }
    /// Frames it in the colour of errors, until it is edited.
    void setFaulty(bool faulty);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    void themeChanged() override;

Q_SIGNALS:
    /// The user has changed the number.
    void edited();
    /// Enter was pressed.
    void entered();

protected:
    /// `pattern`: what may be typed, as a regular expression.
    StepField(const QString &name, const QString &pattern, QWidget *parent);

    void setText(const QString &text);
    /// Changes the number by so many steps.
    virtual void step(int steps) = 0;
    /// The user has typed.
    virtual void typed() {}

    bool eventFilter(QObject *watched, QEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    ZB::CSmallNormalButton *addButton(const QString &sign, const QString &name, int steps);
    void focusCame(Qt::FocusReason reason);
    bool keyPressed(const QKeyEvent &key);
    void stepByUser(int steps);
    void place();

    ZB::CLineEdit *field;
    ZB::CSmallNormalButton *less;
    ZB::CSmallNormalButton *more;
    bool selectsOnRelease = false; ///< the click that brings the focus marks the number
    int wheelRest = 0;             ///< eighths of a degree that were not enough for a step
};

} // namespace terminal
