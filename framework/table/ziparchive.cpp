#include "table/ziparchive.h"

#include <zlib.h>

#include <QtCore/QtEndian>
#include <algorithm>

namespace ZB {

namespace {

constexpr quint32 endSignature = 0x06054b50;
constexpr quint32 wideEndSignature = 0x06064b50;
constexpr quint32 wideLocatorSignature = 0x07064b50;
constexpr quint32 directorySignature = 0x02014b50;
constexpr quint32 localSignature = 0x04034b50;
constexpr int endSize = 22;
constexpr int wideEndSize = 56;
constexpr int wideLocatorSize = 20;
constexpr int directorySize = 46;
constexpr int localSize = 30;
constexpr quint32 inWideField = 0xffffffff;
constexpr int pieceSize = 1 << 18;

template <typename Number>
Number numberAt(const QByteArray &bytes, int at)
{
    return at + int(sizeof(Number)) <= bytes.size() ? qFromLittleEndian<Number>(bytes.constData() + at) : Number(0);
}

/// Sizes and offsets that need 64 bits stand, in this order, in an extra field of their own.
void readWideField(const QByteArray &extra, ZipArchive::Entry &entry)
{
    for (int at = 0; at + 4 <= extra.size(); at += 4 + numberAt<quint16>(extra, at + 2)) {
        if (numberAt<quint16>(extra, at) != 1)
            continue;
        int value = at + 4;
        for (quint64 *number : {&entry.size, &entry.packedSize, &entry.offset}) {
            if (*number != inWideField)
                continue;
            *number = numberAt<quint64>(extra, value);
            value += 8;
        }
        return;
    }
}

} // namespace

ZipArchive::ZipArchive(const QString &path) : file(path) {}

const std::vector<ZipArchive::Entry> &ZipArchive::entries() const
{
    return list;
}

bool ZipArchive::open()
{
    if (!file.open(QIODevice::ReadOnly) || file.size() < endSize || !file.seek(file.size() - endSize))
        return false;
    const QByteArray end = file.read(endSize);
    if (numberAt<quint32>(end, 0) != endSignature)
        return false;
    quint64 count = numberAt<quint16>(end, 10);
    quint64 offset = numberAt<quint32>(end, 16);
    if (file.seek(file.size() - endSize - wideLocatorSize)) {
        const QByteArray locator = file.read(wideLocatorSize);
        if (numberAt<quint32>(locator, 0) == wideLocatorSignature) {
            if (!file.seek(qint64(numberAt<quint64>(locator, 8))))
                return false;
            const QByteArray wideEnd = file.read(wideEndSize);
            if (numberAt<quint32>(wideEnd, 0) != wideEndSignature)
                return false;
            count = numberAt<quint64>(wideEnd, 32);
            offset = numberAt<quint64>(wideEnd, 48);
        }
    }
    return readDirectory(qint64(offset), count);
}

bool ZipArchive::readDirectory(qint64 offset, quint64 count)
{
    if (!file.seek(offset))
        return false;
    for (quint64 index = 0; index < count; ++index) {
        const QByteArray head = file.read(directorySize);
        if (numberAt<quint32>(head, 0) != directorySignature)
            return false;
        Entry entry;
        entry.method = numberAt<quint16>(head, 10);
        entry.packedSize = numberAt<quint32>(head, 20);
        entry.size = numberAt<quint32>(head, 24);
        entry.offset = numberAt<quint32>(head, 42);
        entry.name = QString::fromUtf8(file.read(numberAt<quint16>(head, 28)));
        readWideField(file.read(numberAt<quint16>(head, 30)), entry);
        file.read(numberAt<quint16>(head, 32));
        list.push_back(entry);
    }
    return true;
}

bool ZipArchive::read(const Entry &entry, const Sink &sink)
{
    if (!file.seek(qint64(entry.offset)))
        return false;
    const QByteArray head = file.read(localSize);
    if (numberAt<quint32>(head, 0) != localSignature)
        return false;
    if (!file.seek(file.pos() + numberAt<quint16>(head, 26) + numberAt<quint16>(head, 28)))
        return false;
    if (entry.method == Z_DEFLATED)
        return unpack(entry, sink);
    if (entry.method != 0)
        return false;
    for (quint64 left = entry.size; left > 0;) {
        const QByteArray piece = file.read(qint64(std::min<quint64>(left, pieceSize)));
        if (piece.isEmpty() || !sink(piece.constData(), piece.size()))
            return false;
        left -= quint64(piece.size());
    }
    return true;
}

bool ZipArchive::unpack(const Entry &entry, const Sink &sink)
{
    z_stream stream = {};
    if (inflateInit2(&stream, -MAX_WBITS) != Z_OK)
        return false;
    QByteArray piece(pieceSize, Qt::Uninitialized);
    quint64 left = entry.packedSize;
    quint64 unpacked = 0;
    int state = Z_OK;
    bool goOn = true;
    while (goOn && state == Z_OK) {
        QByteArray packed = file.read(qint64(std::min<quint64>(left, pieceSize)));
        if (packed.isEmpty())
            break;
        left -= quint64(packed.size());
        stream.next_in = reinterpret_cast<Bytef *>(packed.data());
        stream.avail_in = uInt(packed.size());
        while (goOn && state == Z_OK && stream.avail_in > 0) {
            stream.next_out = reinterpret_cast<Bytef *>(piece.data());
            stream.avail_out = pieceSize;
            state = inflate(&stream, Z_NO_FLUSH);
            const auto size = qint64(pieceSize) - qint64(stream.avail_out);
            unpacked += quint64(size);
            goOn = sink(piece.constData(), size);
        }
    }
    inflateEnd(&stream);
    return goOn && state == Z_STREAM_END && unpacked == entry.size;
}

} // namespace ZB
