#include "model/modelrelease.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QThread>
#include <algorithm>
#include <boost/thread/lock_guard.hpp>
#include <boost/thread/mutex.hpp>
#include <vector>

#include "model/chpfdatamodel.h"

namespace KV {

namespace {

using ModelPtr = boost::shared_ptr<CHpfDataModel>;

/// Models that wait for the GUI thread, each once however many rows gave it up.
struct Waiting
{
    boost::mutex mutex;
    std::vector<ModelPtr> models;
};

Waiting &waiting()
{
    // Never destroyed: rows may still die while the program ends.
    static auto *models = new Waiting;
    return *models;
}

void releaseWaiting()
{
    std::vector<ModelPtr> models;
    const boost::lock_guard<boost::mutex> lock(waiting().mutex);
    models.swap(waiting().models);
}

} // namespace

void releaseModel(ModelPtr &&model)
{
    if (!model)
        return;
    QCoreApplication *application = QCoreApplication::instance();
    if (application == nullptr || QThread::currentThread() == application->thread()) {
        model.reset();
        return;
    }
    const boost::lock_guard<boost::mutex> lock(waiting().mutex);
    auto &models = waiting().models;
    if (std::find(models.begin(), models.end(), model) != models.end()) {
        model.reset(); // not the last one: the list has it, and cannot lose it while it is locked
        return;
    }
    models.push_back(std::move(model));
    if (models.size() == 1)
        QMetaObject::invokeMethod(application, releaseWaiting, Qt::QueuedConnection);
}

} // namespace KV
