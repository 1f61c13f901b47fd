#pragma once

#include <QtCore/QString>
#include <QtWidgets/QApplication>
#include <map>

namespace soak {

/// An application that knows what held its window up: the events that took longer than a frame of 1/60 second, by what
/// they were about.
class WatchedApplication : public QApplication
{
    Q_OBJECT

public:
    /// Milliseconds.
    struct Cause
    {
        int count = 0;
        double worst = 0;     ///< by the clock
        double worstBusy = 0; ///< the processor time of the GUI thread in that one; the rest went to other programs
    };

    WatchedApplication(int &argc, char **argv);
    ~WatchedApplication() override;

    bool notify(QObject *receiver, QEvent *event) override;
    /// Says what the event that is being handled is about; others go by receiver and type.
    void nameEvent(const QString &name) { eventName = name; }
    const std::map<QString, Cause> &causes() const { return found; }

private:
    std::map<QString, Cause> found;
    QString eventName;
    int handledLevel = 0; ///< the loop whose event is being handled; of the outermost is 1
    int deepestLevel = 0; ///< the innermost loop since then
};

} // namespace soak
