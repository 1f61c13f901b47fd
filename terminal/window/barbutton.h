#pragma once

#include <QtWidgets/QAbstractButton>

#include "window/windowlook.h"

namespace terminal {

/// A flat button of a bar: a word, with an arrow behind it when a menu opens. Click, Space and Enter press it; the
/// focus shows as a frame.
class BarButton : public QAbstractButton
{
    Q_OBJECT

public:
    explicit BarButton(QWidget *parent = nullptr);
    ~BarButton() override;

    void setLook(const WindowLook &look);
    /// A menu opens below: an arrow says so.
    void setOpensMenu(bool opens);
    /// The widest of these texts decides the width, so that the bar stands still when the text changes.
    void setWidestTexts(const QStringList &texts);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void enterEvent(QEvent *event) override;
    void leaveEvent(QEvent *event) override;

private:
    int arrowWidth() const;
    void paintArrow(QPainter &painter, const QRect &place) const;

    WindowLook look;
    bool opensMenu = false;
    QStringList widestTexts;
};

} // namespace terminal
