#pragma once

#include <QtCore/QTimer>
#include <functional>

namespace terminal {

/// Tells by ear what has happened to an order: one tone for a fill, two for an order that was rejected or not even
/// sent. What comes while tones sound is heard after a rest, a rejection first, and of many alike only one. GUI thread.
class DeskSounds : public QObject
{
    Q_OBJECT

public:
    /// tone: makes one short tone and does not wait for its end.
    explicit DeskSounds(std::function<void()> tone);
    ~DeskSounds() override;

    void play(bool isFill);

private:
    void goOn();

    const std::function<void()> tone;
    QTimer rest;
    int tonesLeft = 0;
    bool isFillWaiting = false;
    bool isRejectWaiting = false;
};

} // namespace terminal
