#pragma once

#include <QtCore/QFile>
#include <QtCore/QString>
#include <functional>
#include <vector>

#include "frameworkexport.h"

namespace ZB {

/// Reads the entries of a zip archive (also beyond 4 GB) as streams. Knows stored and deflated entries. One thread.
class FRAMEWORK_API ZipArchive
{
public:
    struct Entry
    {
        QString name;
        int method = 0;
        quint64 packedSize = 0;
        quint64 size = 0;
        quint64 offset = 0; ///< of its local header
    };

    /// Takes a piece of an entry; false stops the reading.
    using Sink = std::function<bool(const char *bytes, qint64 size)>;

    explicit ZipArchive(const QString &path);

    /// False when the file is no archive, or a damaged one.
    bool open();
    const std::vector<Entry> &entries() const;
    /// Unpacks an entry into the sink. False when it is damaged, has another length than it says, or the sink stopped.
    bool read(const Entry &entry, const Sink &sink);

private:
    bool readDirectory(qint64 offset, quint64 count);
    bool unpack(const Entry &entry, const Sink &sink);

    QFile file;
    std::vector<Entry> list;
};

} // namespace ZB
