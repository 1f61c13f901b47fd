#pragma once

#include "trading/desktypes.h"

#include <QtCore/QObject>
#include <QtCore/QString>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

namespace trading {

/// Writes a desk's changes to its file on a thread of its own, so that nobody waits for the disk: whatever has come
/// while the disk was busy goes into the next transaction together. A write that fails is tried again until it succeeds
/// or the writer ends; nothing is dropped and nothing is written out of order. open(), put() and the destructor belong
/// to one thread, whose event loop brings the signals when connected to an object that lives there.
class DeskWriter : public QObject
{
    Q_OBJECT

public:
    explicit DeskWriter(QObject *parent = nullptr);
    /// Writes what is left, once, and ends the thread.
    ~DeskWriter() override;

    /// Opens or makes the file and reads what the desk stood at; waits for the disk. The text tells what is wrong,
    /// empty for nothing; the writer can then be opened once more.
    QString open(const QString &path, DeskState &state);
    /// Takes over a change, whose number is one above the last one's, from 1.
    void put(DeskChange change);

Q_SIGNALS:
    /// On the writer's thread: all changes up to this number are on the disk.
    void stored(qint64 number);
    /// On the writer's thread, each time that a write fails.
    void failed(const QString &problem);

private:
    void run(const QString &path);
    QString start(const QString &path, class DeskStore &store);
    void stop();

    std::thread thread;
    std::mutex mutex; ///< guards everything below; not held while writing
    std::condition_variable changed;
    std::deque<DeskChange> queue;
    bool isStopping = false;
    bool isOpened = false; ///< the answer to open() is there
    QString openProblem;
    DeskState opened;
};

} // namespace trading
