#include "model/modelrelease.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtCore/QThread>
#include <algorithm>
#include <boost/thread/lock_guard.hpp>
#include <boost/thread/mutex.hpp>
#include <vector>

#include "model/chpfdatamodel.h"

namespace KV {

namespace {

using ModelPtr = boost::shared_ptr<CHpfDataModel>;
using Lock = boost::lock_guard<boost::mutex>;

/// Models that wait for the GUI thread, each once however many rows gave it up. Lives in the GUI thread; is woken by an
/// event without contents.
class WaitingModels : public QObject
{
public:
    void add(ModelPtr &&model)
    {
        const Lock lock(mutex);
        if (std::find(models.begin(), models.end(), model) != models.end()) {
            model.reset(); // not the last hold: the list has one, and cannot lose it while it is locked
            return;
        }
        models.push_back(std::move(model));
        if (models.size() == 1)
            QCoreApplication::postEvent(this, new QEvent(QEvent::User));
    }

protected:
    bool event(QEvent *event) override
    {
        if (event->type() != QEvent::User)
            return QObject::event(event);
        std::vector<ModelPtr> released;
        const Lock lock(mutex);
        released.swap(models);
        return true; // they go after the lock
    }

private:
    boost::mutex mutex; ///< guards the models
    std::vector<ModelPtr> models;
};

WaitingModels &waitingModels(QThread *guiThread)
{
    // Never destroyed: rows may still die while the program ends.
    static auto *waiting = [guiThread] {
        auto *made = new WaitingModels;
        made->moveToThread(guiThread);
        return made;
    }();
    return *waiting;
}

} // namespace

void releaseModel(ModelPtr &&model)
{
    if (!model)
        return;
    const QCoreApplication *application = QCoreApplication::instance();
    if (application == nullptr || QThread::currentThread() == application->thread())
        model.reset();
    else
        waitingModels(application->thread()).add(std::move(model));
}

} // namespace KV
