#pragma once

#include <QtWidgets/QAbstractButton>

#include "frameworkexport.h"
#include "popups/popuplook.h"

namespace ZB {

/// A check box with its text, painted in the theme. GUI thread.
class FRAMEWORK_API CheckButton : public QAbstractButton
{
    Q_OBJECT

public:
    CheckButton(const QString &text, const PopupLook &look, QWidget *parent);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    PopupLook look;
};

} // namespace ZB
