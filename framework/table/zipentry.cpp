#include "table/zipentry.h"

#include <unzip.h>

#include <QtCore/QByteArray>
#include <QtCore/QFile>
#include <memory>
#include <type_traits>

namespace ZB {

namespace {

constexpr int pieceSize = 1 << 18;

/// An archive with one of its entries open.
class OpenEntry
{
public:
    OpenEntry(const QString &archivePath, const QString &entryName)
        : archive(unzOpen64(QFile::encodeName(archivePath).constData()), &unzClose)
    {
        constexpr int caseSensitive = 1;
        isOpen = archive && unzLocateFile(archive.get(), entryName.toUtf8().constData(), caseSensitive) == UNZ_OK &&
                 unzOpenCurrentFile(archive.get()) == UNZ_OK;
    }
    ~OpenEntry() { close(); }

    OpenEntry(const OpenEntry &) = delete;
    OpenEntry &operator=(const OpenEntry &) = delete;

    bool readAll(const ZipSink &sink)
    {
        unz_file_info64 info = {};
        if (!isOpen || unzGetCurrentFileInfo64(archive.get(), &info, nullptr, 0, nullptr, 0, nullptr, 0) != UNZ_OK)
            return false;
        QByteArray piece(pieceSize, Qt::Uninitialized);
        quint64 unpacked = 0;
        for (int size; (size = unzReadCurrentFile(archive.get(), piece.data(), pieceSize)) != 0;) {
            if (size < 0 || !sink(piece.constData(), size))
                return false;
            unpacked += static_cast<quint64>(size);
        }
        return unpacked == info.uncompressed_size && close();
    }

private:
    /// False when the check sum of what was read is not that of the entry.
    bool close()
    {
        const bool whole = isOpen && unzCloseCurrentFile(archive.get()) == UNZ_OK;
        isOpen = false;
        return whole;
    }

    std::unique_ptr<std::remove_pointer_t<unzFile>, decltype(&unzClose)> archive;
    bool isOpen = false;
};

} // namespace

bool readZipEntry(const QString &archivePath, const QString &entryName, const ZipSink &sink)
{
    return OpenEntry(archivePath, entryName).readAll(sink);
}

} // namespace ZB
