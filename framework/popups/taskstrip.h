#pragma once

#include <QtWidgets/QWidget>

#include "frameworkexport.h"
#include "popups/popuplook.h"

class QPushButton;

namespace ZB {

/// Shows a long work over the rows: what it is, how far it is, and a button that stops it. The owner places it.
class FRAMEWORK_API TaskStrip : public QWidget
{
    Q_OBJECT

public:
    explicit TaskStrip(QWidget *parent);

    void setTask(const QString &text);
    const QString &taskText() const { return task; }
    /// In thousandths.
    void setProgress(int progress);
    int progress() const;
    void setLook(const PopupLook &look);

    QSize sizeHint() const override;

Q_SIGNALS:
    void cancelRequested();

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    PopupLook look;
    QString task;
    int done = 0;
    QPushButton *stop;
};

} // namespace ZB
