#pragma once

#include <QtWidgets/QWidget>

#include "frameworkexport.h"
#include "popups/popuplook.h"

class QLabel;
class QLineEdit;
class QPushButton;

namespace ZB {

/// The strip under a table where the user types what to look for in it.
///
/// Keys: Enter and F3 the next hit, with Shift the one before; Escape closes.
class FRAMEWORK_API FindBar : public QWidget
{
    Q_OBJECT

public:
    explicit FindBar(QWidget *parent);

    QString text() const;
    /// Puts the cursor into the field, with its text selected.
    void activate();
    /// Says how the search went, beside the field; `failed` marks the field.
    void setState(const QString &state, bool failed = false);
    void setLook(const PopupLook &look);

Q_SIGNALS:
    void textChanged(const QString &text);
    void findRequested(bool forward);
    void closed();

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    PopupLook look;
    QLineEdit *field;
    QLabel *state;
};

} // namespace ZB
