#include "logfile/logtail.h"

#include <QtCore/QDateTime>
#include <QtCore/QFileInfo>
#include <algorithm>

namespace terminal {

namespace {

constexpr int markBytes = 256;
constexpr int scanBytes = 64 << 10;
const QByteArray utf8Mark = QByteArrayLiteral("\xEF\xBB\xBF");

QString problemOf(const QFileInfo &info)
{
    if (!info.exists())
        return QStringLiteral("文件不存在，等待它出现");
    if (info.isDir())
        return QStringLiteral("这是一个文件夹，不是文件");
    if (!info.isFile()) // a pipe or a device: opening it may never end
        return QStringLiteral("这不是普通文件，无法读取");
    return {};
}

/// Bytes of a file in front of a place, at most `count`.
QByteArray bytesBefore(QFile &file, qint64 place, qint64 count)
{
    count = std::min(count, place);
    return file.seek(place - count) ? file.read(count) : QByteArray();
}

} // namespace

LogTail::LogTail(const QString &filePath, const Limits &given) : path(filePath), limits(given), file(filePath) {}

bool LogTail::read(LogRead &out)
{
    out = LogRead();
    if (!file.isOpen() && !open(out, LogFileEvent::Opened))
        return out.event != LogFileEvent::None;
    if (atEnd && file.size() != position && !isKnown(file)) // written anew, perhaps longer than before
        return startAgain(out, file.size() < position ? LogFileEvent::Truncated : LogFileEvent::Replaced);
    if (file.size() - position > limits.backlog)
        skipAhead(out);
    const QByteArray bytes = file.seek(position) ? file.read(limits.blockBytes) : QByteArray();
    if (!bytes.isEmpty()) {
        atEnd = false;
        noteRead(bytes);
        splitLines(bytes, out.lines);
        return true;
    }
    if (file.error() != QFileDevice::NoError) {
        lose(out, QStringLiteral("无法读取：%1").arg(file.errorString()));
        return true;
    }
    const LogFileEvent change = changeOnDisk();
    if (change != LogFileEvent::None)
        return startAgain(out, change);
    atEnd = true;
    return (isQuiet() && endLine(out.lines, wholeCharacters())) || out.event != LogFileEvent::None;
}

/// What is left of the old file comes first, in a step of its own.
bool LogTail::startAgain(LogRead &out, LogFileEvent event)
{
    if (!endLine(out.lines, pending.size()))
        open(out, event);
    return true;
}

/// Opens the file by its name and finds where to begin.
bool LogTail::open(LogRead &out, LogFileEvent event)
{
    file.close();
    const QString problem = problemOf(QFileInfo(path));
    if (!problem.isEmpty() || !file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        lose(out, problem.isEmpty() ? QStringLiteral("无法打开：%1").arg(file.errorString()) : problem);
        return false;
    }
    out.event = event;
    isLost = false;
    lastProblem.clear();
    if (position > 0 && isKnown(file)) // it was away for a while
        return true;
    atEnd = false;
    position = 0;
    head.clear();
    newest.clear();
    pending.clear();
    lineStarted = false;
    skipAhead(out);
    return true;
}

void LogTail::lose(LogRead &out, const QString &problem)
{
    file.close();
    out.problem = problem;
    if (!isLost || problem != lastProblem)
        out.event = LogFileEvent::Lost;
    isLost = true;
    lastProblem = problem;
    atEnd = true;
}

/// Passes over what would not be kept anyway.
void LogTail::skipAhead(LogRead &out)
{
    const qint64 start = startOfNewest();
    out.skipped = start - position;
    if (out.skipped <= 0)
        return;
    pending.clear();
    lineStarted = false;
    if (head.isEmpty() && file.seek(0))
        head = file.read(markBytes);
    position = start;
    newest = bytesBefore(file, start, markBytes);
}

/// Where the newest lines begin that may be given; a line end has the same byte in both encodings.
qint64 LogTail::startOfNewest()
{
    const qint64 size = file.size();
    const qint64 least = std::max(position, size - limits.backlog);
    qint64 firstLineEnd = -1; // behind the first line end found in what is looked at
    int left = limits.lines;
    for (qint64 end = size; end > least;) {
        const qint64 begin = std::max(least, end - scanBytes);
        const QByteArray bytes = file.seek(begin) ? file.read(end - begin) : QByteArray();
        for (qint64 i = bytes.size() - 1; i >= 0; --i) {
            if (bytes.at(static_cast<int>(i)) != '\n' || begin + i == size - 1)
                continue;
            firstLineEnd = begin + i + 1;
            if (--left == 0)
                return firstLineEnd;
        }
        end = begin;
    }
    return least == position ? position : firstLineEnd >= 0 ? firstLineEnd : least;
}

/// At the end of what is open: whether the name stands for something else by now.
LogFileEvent LogTail::changeOnDisk()
{
    QFile named(path);
    if (!problemOf(QFileInfo(path)).isEmpty() || !named.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return LogFileEvent::Opened; // or so it is hoped: open() will see
    const qint64 size = named.size();
    const qint64 openSize = file.size();
    if (openSize < position)
        return LogFileEvent::Truncated;
    return size <= openSize && isKnown(named) ? LogFileEvent::None : LogFileEvent::Replaced;
}

/// Whether an open file is the one that was read so far, perhaps longer by now.
bool LogTail::isKnown(QFile &other) const
{
    return other.size() >= position && other.seek(0) && other.read(head.size()) == head &&
           bytesBefore(other, position, newest.size()) == newest;
}

void LogTail::noteRead(const QByteArray &bytes)
{
    if (position == head.size() && head.size() < markBytes)
        head += bytes.left(markBytes - head.size());
    newest = bytes.size() >= markBytes ? bytes.right(markBytes) : (newest + bytes).right(markBytes);
    position += bytes.size();
    sinceNews.start();
}

void LogTail::splitLines(const QByteArray &bytes, QStringList &lines)
{
    int start = 0;
    if (position == bytes.size() && bytes.startsWith(utf8Mark))
        start = utf8Mark.size();
    for (int end = bytes.indexOf('\n', start); end >= 0; end = bytes.indexOf('\n', start)) {
        pending.append(bytes.constData() + start, end - start);
        start = end + 1;
        if (pending.endsWith('\r'))
            pending.chop(1);
        if (!lineStarted || !pending.isEmpty())
            addPart(pending.constData(), pending.size(), lines);
        pending.clear();
        lineStarted = false;
    }
    pending.append(bytes.constData() + start, bytes.size() - start);
    while (pending.size() > limits.lineBytes) {
        const int size = limits.lineBytes - textDecoder.unfinished(pending.constData(), limits.lineBytes);
        addPart(pending.constData(), size, lines);
        pending.remove(0, size);
        lineStarted = true;
    }
}

void LogTail::addPart(const char *bytes, int length, QStringList &lines)
{
    while (length > limits.lineBytes) {
        const int size = limits.lineBytes - textDecoder.unfinished(bytes, limits.lineBytes);
        lines << textDecoder.decode(bytes, size);
        bytes += size;
        length -= size;
    }
    lines << textDecoder.decode(bytes, length);
}

/// Whether nobody has written for a while.
bool LogTail::isQuiet() const
{
    if (pending.isEmpty() || !sinceNews.isValid() || sinceNews.hasExpired(limits.quietMs))
        return true;
    return QFileInfo(path).lastModified().msecsTo(QDateTime::currentDateTime()) > limits.quietMs;
}

/// How much of the line that is not complete can be given: not half a character, and not half a line end.
int LogTail::wholeCharacters() const
{
    const int size = pending.size() - textDecoder.unfinished(pending.constData(), pending.size());
    return size > 0 && pending.at(size - 1) == '\r' ? size - 1 : size;
}

/// Gives the first bytes of a line that is not complete.
bool LogTail::endLine(QStringList &lines, int size)
{
    if (size == 0)
        return false;
    addPart(pending.constData(), size, lines);
    pending.remove(0, size);
    lineStarted = true;
    return true;
}

} // namespace terminal
