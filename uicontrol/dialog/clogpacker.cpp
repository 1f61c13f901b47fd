#include "dialog/clogpacker.h"

#include <KZip>

#include <QtCore/QDateTime>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <vector>

#include "dialog/clogmasker.h"
#include "dialog/clogpackfolder.h"

namespace KV {

namespace {

constexpr qint64 chunkBytes = 256 << 10;
constexpr int longestLine = 1 << 20; ///< bytes; of a longer one the rest is left out
constexpr size_t mostHeldOpen = 64;  ///< files: a process may not open many more, and its connections need some

/// A file that is to be packed. The newest are held open from the start, so that renaming them changes nothing.
struct OpenLog
{
    LogFileEntry entry;
    QString name;                ///< in the zip file
    std::unique_ptr<QFile> file; ///< null for one that is opened when it is its turn
    qint64 end = 0;              ///< where it ended at the start
};

/// Reads a file line by line, and a limited number of bytes.
class LineReader
{
public:
    LineReader(QFile &source, qint64 limit) : file(source), left(limit) {}

    /// The next whole lines; empty at the end.
    QByteArray next()
    {
        while (left > 0 && rest.lastIndexOf('\n') < 0 && rest.size() <= longestLine) {
            const QByteArray more = file.read(std::min(left, chunkBytes));
            isShort = isShort || more.isEmpty(); // cut off meanwhile, or unreadable
            left = more.isEmpty() ? 0 : left - more.size();
            rest += more;
        }
        return rest.size() > longestLine && rest.lastIndexOf('\n') < 0 ? takeOverlong() : takeLines();
    }
    /// Why the file has not been read to its end; empty when it has.
    QString problem() const
    {
        if (file.error() != QFileDevice::NoError)
            return file.errorString();
        return isShort ? QStringLiteral("文件在读取时变短") : QString();
    }

private:
    QByteArray takeLines()
    {
        const int end = left > 0 ? rest.lastIndexOf('\n') + 1 : rest.size();
        const QByteArray lines = rest.left(end);
        rest.remove(0, end);
        return lines;
    }

    /// A secret could stand across any cut: the line goes on without what follows, up to its end.
    QByteArray takeOverlong()
    {
        int end = longestLine;
        while (end > 0 && !QByteArray(" \t,;").contains(rest[end - 1]))
            --end;
        const QByteArray start = rest.left(end);
        qint64 omitted = rest.size() - end;
        rest.clear();
        while (left > 0 && rest.isEmpty()) {
            QByteArray more = file.read(std::min(left, chunkBytes));
            isShort = isShort || more.isEmpty();
            left = more.isEmpty() ? 0 : left - more.size();
            const int lineEnd = more.indexOf('\n');
            omitted += lineEnd < 0 ? more.size() : lineEnd;
            rest = lineEnd < 0 ? QByteArray() : more.mid(lineEnd);
        }
        return start + QStringLiteral("［此行过长，省略 %1 字节］").arg(omitted).toUtf8() +
               (rest.isEmpty() ? "\n" : "");
    }

    QFile &file;
    qint64 left;
    QByteArray rest;
    bool isShort = false;
};

class Packing
{
public:
    Packing(const LogPackRequest &wanted, LogPack &result) : request(wanted), pack(result), masker(wanted.accounts) {}

    void run()
    {
        openFiles();
        if (!prepare())
            return;
        QFile file(pack.path);
        if (!file.open(QIODevice::ReadWrite | QIODevice::Unbuffered)) {
            fail(QStringLiteral("无法在临时目录中创建文件：%1").arg(file.errorString()));
            return;
        }
        KZip zip(&file);
        bool good = zip.open(QIODevice::WriteOnly);
        for (OpenLog &log : logs)
            good = good && add(zip, file, log);
        good = zip.close() && good; // closes the file too, which forgets its errors
        if (!good && pack.problem.isEmpty() && !pack.cancelled)
            fail(QStringLiteral("无法写入压缩文件，磁盘可能已满：%1").arg(zip.errorString()));
        pack.size = file.size();
        if (good && pack.size > request.mostPacked)
            failOfSize();
    }

private:
    void openFiles()
    {
        for (const LogFileEntry &entry : request.files) {
            OpenLog log{entry, nameInPack(entry.name), std::make_unique<QFile>(entry.path), 0};
            if (!open(log))
                continue;
            log.end = log.file->size();
            if (log.end < entry.size)
                pack.notes << QStringLiteral("%1 比列出时短，可能已经轮换").arg(log.name);
            if (logs.size() >= mostHeldOpen)
                log.file.reset();
            pack.totalBytes += log.end;
            logs.push_back(std::move(log));
        }
    }

    bool open(OpenLog &log)
    {
        if (!log.file->open(QIODevice::ReadOnly)) {
            pack.notes << QStringLiteral("%1 没有发送：%2").arg(log.name, log.file->errorString());
            return false;
        }
        return true;
    }

    /// Masked, without what a file system could refuse, and each name once.
    QString nameInPack(const QString &name)
    {
        QString masked = QString::fromUtf8(masker.masked(name.toUtf8())).replace(QLatin1Char('*'), QLatin1Char('x'));
        while (names.contains(masked))
            masked.prepend(QLatin1String("2-"));
        names << masked;
        return masked;
    }

    bool prepare()
    {
        if (logs.empty())
            return fail(QStringLiteral("没有可以读取的日志文件"));
        if (pack.totalBytes > mostLogBytes)
            return fail(QStringLiteral("所选日志共 %1，超过 %2，请缩小日期范围")
                            .arg(sizeText(pack.totalBytes), sizeText(mostLogBytes)));
        pack.folder = std::make_unique<CLogPackFolder>();
        if (!pack.folder->problem().isEmpty())
            return fail(pack.folder->problem());
        pack.path = pack.folder->filePath(request.name);
        return true;
    }

    bool add(KZip &zip, QFile &file, OpenLog &log)
    {
        if (log.file == nullptr) {
            log.file = std::make_unique<QFile>(log.entry.path);
            if (!open(log))
                return true; // the others go along
        }
        const QDateTime time = QFileInfo(*log.file).lastModified();
        if (!zip.prepareWriting(log.name, QString(), QString(), 0, 0100644, time, time, time)) {
            isWritable(file); // says why, if it is the disk
            return false;
        }
        qint64 written = 0;
        const bool good = copyLines(zip, file, log, written);
        log.file.reset();
        // An entry that is given up is ended too: nothing else lets go of what compresses it.
        if (!zip.finishWriting(written) || !good)
            return false;
        ++pack.fileCount;
        return true;
    }

    bool copyLines(KZip &zip, const QFile &file, OpenLog &log, qint64 &written)
    {
        LineReader reader(*log.file, log.end);
        for (QByteArray lines = reader.next(); !lines.isEmpty(); lines = reader.next()) {
            const QByteArray copy = masker.masked(lines);
            written += copy.size();
            const bool taken = zip.writeData(copy.constData(), copy.size());
            if (pack.cancelled || !isWritable(file) || !taken)
                return false;
            pack.readBytes += lines.size();
            if (file.size() > request.mostPacked)
                return failOfSize();
        }
        if (const QString problem = reader.problem(); !problem.isEmpty())
            pack.notes << QStringLiteral("%1 没有读完：%2").arg(log.name, problem);
        return true;
    }

    bool isWritable(const QFile &file)
    {
        if (file.error() == QFileDevice::NoError)
            return true;
        return fail(QStringLiteral("无法写入临时文件，磁盘可能已满：%1").arg(file.errorString()));
    }

    bool failOfSize()
    {
        return fail(QStringLiteral("压缩后超过 %1，请缩小日期范围或少选文件").arg(sizeText(request.mostPacked)));
    }

    bool fail(const QString &problem)
    {
        if (pack.problem.isEmpty())
            pack.problem = problem;
        return false;
    }

    const LogPackRequest &request;
    LogPack &pack;
    const CLogMasker masker;
    std::vector<OpenLog> logs;
    QStringList names; ///< of the logs, as they are in the zip file
};

} // namespace

LogPack::LogPack() = default;
LogPack::~LogPack() = default;

void packLogs(const LogPackRequest &request, LogPack &pack)
{
    Packing(request, pack).run();
    if (pack.cancelled || !pack.problem.isEmpty()) {
        pack.folder.reset();
        pack.path.clear();
        pack.size = 0;
    }
    pack.finished = true;
}

} // namespace KV
