#pragma once

#include <QtCore/QObject>
#include <memory>
#include <mutex>

#include "codes/codeindex.h"
#include "frameworkexport.h"

namespace ZB {

class ModelWakeUp;

/// The index over the host's instruments, one for all code fields: built on a strand of the host's network engine, and
/// again when the host's list has changed. GUI thread.
class FRAMEWORK_API CodeIndexSource : public QObject
{
    Q_OBJECT

public:
    /// Lives to the end of the process.
    static CodeIndexSource *instance();

    /// The last one that is finished; null before the first.
    std::shared_ptr<const CodeIndex> index() const;
    /// Has a new one built if the host's list has changed since; returns at once. Called whenever somebody is about to
    /// search.
    void refresh();

Q_SIGNALS:
    /// index() is another one now.
    void sigIndexChanged();

private:
    struct Shared;

    CodeIndexSource();
    ~CodeIndexSource() override;
    void slotBuilt();

    const std::unique_ptr<ModelWakeUp> wakeUp;
    const std::shared_ptr<Shared> shared;
    std::shared_ptr<const CodeIndex> present;
    bool isBuilding = false;
    bool hasAsked = false;
    quint64 askedVersion = 0;
};

} // namespace ZB
