#include "dialog/clogsaver.h"

#include <QtCore/QFile>
#include <QtCore/QSaveFile>

namespace KV {

namespace {

constexpr qint64 chunkBytes = 1 << 20;

/// The reason why it has failed; empty when it has not.
QString copyBytes(QFile &source, QSaveFile &target, LogCopy &copy)
{
    while (!copy.cancelled) {
        const QByteArray bytes = source.read(chunkBytes);
        if (source.error() != QFileDevice::NoError)
            return source.errorString();
        if (bytes.isEmpty())
            return {};
        if (target.write(bytes) != bytes.size())
            return target.errorString();
        copy.writtenBytes += bytes.size();
    }
    return {};
}

QString save(LogCopy &copy)
{
    QFile source(copy.from);
    if (!source.open(QIODevice::ReadOnly))
        return source.errorString();
    QSaveFile target(copy.to);
    if (!target.open(QIODevice::WriteOnly))
        return target.errorString();
    const QString problem = copyBytes(source, target, copy);
    if (!problem.isEmpty() || copy.cancelled) {
        target.cancelWriting();
        return problem;
    }
    return target.commit() ? QString() : target.errorString();
}

} // namespace

void saveLogCopy(LogCopy &copy)
{
    copy.problem = save(copy);
    copy.finished = true;
}

} // namespace KV
