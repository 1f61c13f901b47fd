#pragma once

#include <QtCore/QObject>
#include <atomic>
#include <functional>
#include <memory>
#include <mutex>

namespace ZB {

/// Brings a model's change listener, which is called on any thread, to the GUI thread: many calls become one woken().
/// The listener may be called during and after the destruction of this object.
class ModelWakeUp : public QObject
{
    Q_OBJECT

public:
    ModelWakeUp();
    ~ModelWakeUp() override;

    std::function<void()> listener() const;

Q_SIGNALS:
    void woken();

protected:
    bool event(QEvent *event) override;

private:
    struct Shared
    {
        std::atomic<bool> posted{false};
        std::mutex mutex; ///< guards the receiver
        QObject *receiver = nullptr;
    };
    std::shared_ptr<Shared> shared;
};

} // namespace ZB
