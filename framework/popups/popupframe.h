#pragma once

#include <QtWidgets/QFrame>

#include "frameworkexport.h"
#include "popups/popuplook.h"

namespace ZB {

/// A small window that stands at a place over its parent until the user clicks elsewhere or presses Escape; it deletes
/// itself then, and goes with its parent. GUI thread.
class FRAMEWORK_API PopupFrame : public QFrame
{
    Q_OBJECT

public:
    explicit PopupFrame(QWidget *parent);
    ~PopupFrame() override;

    /// Shows it below a rectangle of the screen, or above where there is no room, and always whole on the screen; at
    /// the rectangle's left or right edge.
    void showAt(const QRect &anchor, Qt::Edge edge = Qt::LeftEdge);

    /// What it is about goes away: lets go of it now and closes. It may be called from one of its own signals, so the
    /// box itself is deleted later.
    virtual void abandon();

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    /// After its contents need more or less room: as large as they want it, at the same place.
    void fit();

    PopupLook look;

private:
    QRect anchored;
    Qt::Edge anchoredEdge = Qt::LeftEdge;
};

/// Moves a rectangle of this size next to an anchor: below it if there is room on the screen, else above; never beyond.
QRect placedAt(const QRect &anchor, const QSize &size, const QRect &screen);

} // namespace ZB
