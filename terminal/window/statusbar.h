#pragma once

#include <QtCore/QElapsedTimer>
#include <QtCore/QStringList>
#include <QtWidgets/QWidget>

#include "feed/feedbatch.h"
#include "window/windowlook.h"
#include "zb/cuiresourcechangehandler.h"

class QHBoxLayout;

namespace terminal {

class BarLabel;
class FeedPump;
class FrameMeter;
class StallMeter;

/// The bar at the bottom: how much has come in and how fast, what a frame costs, and the last error.
class StatusBar : public QWidget, public ZB::CUiResourceChangeHandler
{
    Q_OBJECT

public:
    StatusBar(const FeedPump &pump, const FrameMeter &frames, StallMeter &stalls, QWidget *parent);
    ~StatusBar() override;

    void showMessage(const feed::FeedMessage &message);
    /// Shows the present figures. Called a few times a second.
    void refresh();

    void themeChanged() override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    BarLabel *addFigure(QHBoxLayout *layout, const QString &caption, const QString &widest);
    void applyLook();
    double updatesPerSecond();

    const FeedPump &pump;
    const FrameMeter &frames;
    StallMeter &stalls;
    WindowLook look;
    BarLabel *orders;
    BarLabel *deals;
    BarLabel *quotes;
    BarLabel *rate;
    BarLabel *message;
    BarLabel *frameTime;
    BarLabel *stall;
    BarLabel *problems;

    QElapsedTimer sinceRate;
    qint64 updatesBefore = 0;
    qint64 framesBefore = 0;
    QStringList lastMessages; ///< newest last, for the tool tip
};

} // namespace terminal
