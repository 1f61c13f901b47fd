#include "log/clogblockqueue.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QThread>
#include <algorithm>
#include <chrono>
#include <map>

namespace KV {

namespace {

constexpr qint64 processBound = 64LL << 20;
/// How long an idle worker watches the queue before it sleeps. Waking it costs the caller more than a line does.
constexpr auto watchTime = std::chrono::milliseconds(2);

qint64 bytesOf(const LogBlock &block)
{
    return static_cast<qint64>(sizeof(LogBlock)) + 2LL * block.text.size();
}

bool onGuiThread()
{
    const QCoreApplication *application = QCoreApplication::instance();
    return application && application->thread() == QThread::currentThread();
}

void countLines(LogBlock &block)
{
    const ushort *const text = block.text.utf16();
    const int size = block.text.size();
    int ends = 0;
    int empty = size == 0 || text[0] == u'\n' ? 1 : 0;
    for (int i = 0; i + 1 < size; ++i) {
        ends += text[i] == u'\n' ? 1 : 0;
        empty += text[i] == u'\n' && text[i + 1] == u'\n' ? 1 : 0;
    }
    if (size > 0 && text[size - 1] == u'\n') {
        ++ends;
        ++empty;
    }
    block.lines = ends + 1;
    block.filled = block.lines - empty;
}

/// Drops leading lines of a block so that `wanted` lines with text stay.
void keepNewest(LogBlock &block, int wanted)
{
    const QChar *const begin = block.text.constData();
    const QChar *const end = begin + block.text.size();
    const QChar *start = end + 1; // of the lines that stay
    for (int filled = 0; filled < wanted && start > begin;) {
        const QChar *const lineEnd = start - 1;
        for (start = lineEnd; start > begin && start[-1] != QLatin1Char('\n');)
            --start;
        filled += start < lineEnd ? 1 : 0;
    }
    if (start == begin)
        return;
    block.text = QString(start, static_cast<int>(end - start));
    const int before = block.lines;
    countLines(block);
    block.skipped += before - block.lines;
}

} // namespace

CLogBlockSink::~CLogBlockSink() = default;

CLogBlockQueue::CLogBlockQueue(qint64 boundInBytes, void (*routine)())
    : bound(boundInBytes), stopRoutine(routine), dropAt(boundInBytes)
{
}

CLogBlockQueue::~CLogBlockQueue()
{
    stop();
}

CLogBlockQueue &CLogBlockQueue::instance()
{
    static CLogBlockQueue queue(processBound, [] { instance().stop(); });
    return queue;
}

void CLogBlockQueue::add(LogBlock block)
{
    const bool gui = onGuiThread();
    countLines(block);
    std::unique_lock<std::mutex> lock(mutex);
    if (!gui)
        room.wait(lock, [this] { return stopping || bytes < bound; });
    if (stopping)
        return;
    bytes += bytesOf(block);
    blocks.push_back(std::move(block));
    if (gui && bytes >= dropAt)
        dropHopeless();
    if (!worker.joinable()) {
        if (stopRoutine)
            qAddPostRoutine(stopRoutine);
        worker = std::thread([this] { run(); });
    }
    if (asleep)
        work.notify_one();
}

void CLogBlockQueue::stop()
{
    std::deque<LogBlock> unwanted;
    std::thread ending;
    {
        const std::lock_guard<std::mutex> lock(mutex);
        stopping = true;
        unwanted.swap(blocks);
        bytes = 0;
        ending.swap(worker);
        work.notify_one();
        room.notify_all();
    }
    if (ending.joinable())
        ending.join();
    const std::lock_guard<std::mutex> lock(mutex);
    stopping = false;
    dropped.clear();
}

qint64 CLogBlockQueue::queuedBytes() const
{
    const std::lock_guard<std::mutex> lock(mutex);
    return bytes;
}

void CLogBlockQueue::run()
{
    std::unique_lock<std::mutex> lock(mutex);
    while (waitForBlock(lock)) {
        std::vector<QString> unwanted;
        unwanted.swap(dropped);
        LogBlock block = std::move(blocks.front());
        blocks.pop_front();
        const bool wasFull = bytes >= bound;
        bytes -= bytesOf(block);
        if (bytes < bound)
            dropAt = bound;
        lock.unlock();
        if (wasFull)
            room.notify_all();
        unwanted.clear();
        block.sink->takeBlock(block);
        block = LogBlock(); // perhaps the last reference to the sink; never let go of with the queue locked
        lock.lock();
    }
}

/// False when the queue stops.
bool CLogBlockQueue::waitForBlock(std::unique_lock<std::mutex> &lock)
{
    const auto ready = [this] { return stopping || !blocks.empty(); };
    if (!ready() && !work.wait_for(lock, watchTime, ready)) {
        asleep = true;
        work.wait(lock, ready);
        asleep = false;
    }
    return !stopping;
}

/// Drops queued lines with so many later ones of their level behind them that they would be trimmed from every list.
void CLogBlockQueue::dropHopeless()
{
    std::map<std::pair<const CLogBlockSink *, int>, qint64> later;
    std::deque<LogBlock> kept;
    bytes = 0;
    for (auto block = blocks.rbegin(); block != blocks.rend(); ++block) {
        qint64 &behind = later[{block->sink.get(), block->level}];
        const qint64 wanted = block->sink->keptLines() - behind;
        if (wanted <= 0) { // the block that made it so is in `kept`, and with it the sink
            kept.front().skipped += block->skipped + block->lines;
            dropped.push_back(std::move(block->text));
            continue;
        }
        if (block->filled > wanted)
            keepNewest(*block, static_cast<int>(wanted));
        behind += block->filled;
        bytes += bytesOf(*block);
        kept.push_front(std::move(*block));
    }
    blocks.swap(kept);
    dropAt = std::max(bound, bytes + bytes / 4);
}

} // namespace KV
