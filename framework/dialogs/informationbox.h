#pragma once

#include <QtWidgets/QDialog>

#include "popups/popuplook.h"

namespace ZB {

/// A box with a text and one button, in the theme. Deletes itself when closed. GUI thread.
class InformationBox : public QDialog
{
    Q_OBJECT

public:
    InformationBox(QWidget *parent, const QString &title, const QString &text);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    PopupLook look;
};

} // namespace ZB
