#pragma once

#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QStringList>

#include "logfile/logdecoder.h"

namespace terminal {

/// What became of a followed file since it was looked at before.
enum class LogFileEvent
{
    None,
    Opened,    ///< for the first time, or after it was away
    Truncated, ///< it is read from its start again
    Replaced,  ///< another file has its name now, which is read from its start
    Lost       ///< it cannot be read any more, or not yet; `problem` says why
};

/// What one look at a file gave.
struct LogRead
{
    LogFileEvent event = LogFileEvent::None; ///< happened before the lines
    qint64 skipped = 0;                      ///< bytes passed over in front of the lines, since the file is longer
    QStringList lines;
    QString problem; ///< why nothing can be read; empty while all is well
};

/// Reads the end of a growing file, in whatever way it grows: written on, cut to nothing, renamed and begun anew,
/// replaced, absent for a while. Blocks while it reads, so it is not for the GUI thread. One thread at a time.
class LogTail
{
public:
    struct Limits
    {
        int lines = 50001;           ///< of a longer file only so many are read
        qint64 backlog = 64LL << 20; ///< bytes that are read at most when far behind
        int lineBytes = 1 << 20;     ///< a longer line is given in parts
        int blockBytes = 256 << 10;  ///< read in one step
        int quietMs = 1000;          ///< after which a last line without a line end is given
    };

    explicit LogTail(const QString &filePath) : LogTail(filePath, Limits()) {}
    LogTail(const QString &filePath, const Limits &limits);

    /// Takes the next step. False when there was nothing to do: the file has been read to its end, or cannot be read.
    bool read(LogRead &out);

    const LogDecoder &decoder() const { return textDecoder; }
    /// Whether the file was read to its end, except for a last line that may still be written on.
    bool isAtEnd() const { return atEnd; }

private:
    bool startAgain(LogRead &out, LogFileEvent event);
    bool open(LogRead &out, LogFileEvent event);
    void lose(LogRead &out, const QString &problem);
    qint64 startOfNewest();
    void skipAhead(LogRead &out);
    LogFileEvent changeOnDisk();
    void noteRead(const QByteArray &bytes);
    void splitLines(const QByteArray &bytes, QStringList &lines);
    void addPart(const char *bytes, int length, QStringList &lines);
    bool isKnown(QFile &other) const;
    bool isQuiet() const;
    int wholeCharacters() const;
    bool endLine(QStringList &lines, int size);

    const QString path;
    const Limits limits;
    QFile file;
    qint64 position = 0; ///< of what has been read
    QByteArray head;     ///< the first bytes of the file and the last ones read: by these it is known again
    QByteArray newest;
    QByteArray pending;       ///< the beginning of a line
    bool lineStarted = false; ///< a part of the line that `pending` belongs to has been given already
    bool isLost = false;
    bool atEnd = false;
    QString lastProblem;
    QElapsedTimer sinceNews;
    LogDecoder textDecoder;
};

} // namespace terminal
