#pragma once

#include <QtWidgets/QWidget>

#include "frameworkexport.h"
#include "popups/popuplook.h"

namespace ZB {

/// A small sign over the rows that says one thing and can be clicked ("已暂停", "12 条新记录"). The owner places it;
/// its size follows its text.
class FRAMEWORK_API GridBadge : public QWidget
{
    Q_OBJECT

public:
    explicit GridBadge(QWidget *parent);

    void setText(const QString &text);
    QString text() const;
    /// Stands out in the accent colour.
    void setStrong(bool strong);
    /// Takes up the theme anew.
    void setLook(const PopupLook &look);

    QSize sizeHint() const override;

Q_SIGNALS:
    void clicked();

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void enterEvent(QEvent *event) override;
    void leaveEvent(QEvent *event) override;

private:
    PopupLook look;
    QString shown;
    bool strong = false;
    bool hovered = false;
};

} // namespace ZB
