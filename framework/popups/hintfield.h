#pragma once

#include <QtWidgets/QLineEdit>

#include "frameworkexport.h"

namespace ZB {

/// A text field that says what it is for while it is empty, in the second text colour. (A placeholder of Qt takes the
/// colour that a style sheet gives to texts, and then reads like one.)
class FRAMEWORK_API HintField : public QLineEdit
{
    Q_OBJECT

public:
    HintField(const QString &hint, QWidget *parent);

    QString hint() const;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    const QString shownHint;
};

} // namespace ZB
