#pragma once

#include <QtCore/QBasicTimer>
#include <QtCore/QElapsedTimer>
#include <QtCore/QObject>

namespace terminal {

/// Measures how long the event loop of the thread it lives on keeps anybody waiting: a timer of a few milliseconds
/// whose lateness is the stall. Stalls of the machine itself count too.
class StallMeter : public QObject
{
    Q_OBJECT

public:
    explicit StallMeter(QObject *parent = nullptr);
    ~StallMeter() override;

    /// Starts, or forgets what was measured so far.
    void restart();
    void stop();
    /// The longest stall since restart(), in milliseconds; one that is going on included.
    double worst() const;
    /// The longest stall since this was last asked, in milliseconds.
    double takeRecentWorst();

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    double lateness() const;

    QBasicTimer timer;
    QElapsedTimer sinceTick;
    double worstSoFar = 0;
    double recentWorst = 0;
};

} // namespace terminal
