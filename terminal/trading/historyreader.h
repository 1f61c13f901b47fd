#pragma once

#include "threads/callqueue.h"
#include "trading/historyquery.h"

#include <QtCore/QObject>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <thread>

namespace trading {

class HistorySearch;

/// Reads the past of a desk file on a thread of its own, so that nobody waits for the disk. Only what was asked for
/// last is answered; a search for something else ends within a step. Belongs to the thread that makes it, whose event
/// loop brings the signals.
class HistoryReader : public QObject
{
    Q_OBJECT

public:
    explicit HistoryReader(const QString &path, QObject *parent = nullptr);
    ~HistoryReader() override;

    /// Answered by pageRead(), while a search goes on again and again with what has been found since, and at last with
    /// the sums. anew: looks also
    /// for rows that have come since the query was first asked for, and tells the choices.
    void ask(const HistoryQuery &query, qint64 start, int count, bool anew);

Q_SIGNALS:
    /// number: of the call of ask() that it answers, from 1.
    void pageRead(qint64 number, const trading::HistoryPage &page);
    void choicesRead(const trading::HistoryChoices &choices);

private:
    struct Request
    {
        HistoryQuery query;
        qint64 start = 0;
        int count = 0;
        bool isAnew = false;
        qint64 number = 0;
    };

    void run(const QString &path);
    void serve(HistorySearch &search, Request &request);
    bool isOvertaken();

    void tell(qint64 number, HistoryPage page);

    core::CallQueue calls; ///< of the reading thread
    std::thread thread;
    std::mutex mutex; ///< guards everything below; not held while reading
    std::condition_variable changed;
    std::optional<Request> waiting;
    qint64 asked = 0;
    bool isStopping = false;
};

} // namespace trading
