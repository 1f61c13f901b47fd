#pragma once

#include <QtCore/QObject>
#include <QtCore/QPoint>

namespace ZB {

/// Keeps the second click of a double-click, whose first one has closed a popup, from what stood below it: that may be
/// a button that sends an order. Any other press and any key end it. GUI thread; deletes itself.
class ClickGuard : public QObject
{
    Q_OBJECT

public:
    /// The popup has just been clicked there, on the screen, and is about to close.
    static void startAt(const QPoint &place);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    explicit ClickGuard(const QPoint &place);
    bool takesPress(const QPoint &at);
    void end();

    const QPoint place;
    bool isTaking = false; ///< the second press has come: its release belongs to it
};

} // namespace ZB
