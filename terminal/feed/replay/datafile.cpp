#include "feed/replay/datafile.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include <zlib.h>

namespace feed {

namespace {

constexpr size_t inputSize = 64 * 1024;
constexpr char gzipMagic[] = {'\x1f', '\x8b'};
constexpr int gzipWindow = 15 + 16; // zlib: the largest window, in a gzip wrapper

} // namespace

DataFile::DataFile(Progress readProgress) : progress(std::move(readProgress)) {}

DataFile::~DataFile()
{
    if (stream)
        inflateEnd(stream.get());
}

bool DataFile::open(const QString &path)
{
    file.setFileName(path);
    if (!file.open(QIODevice::ReadOnly)) {
        current = State::CannotOpen;
        return false;
    }
    input.resize(inputSize);
    refill();
    compressed = inputEnd >= 2 && std::memcmp(input.data(), gzipMagic, 2) == 0;
    if (compressed) {
        stream = std::make_unique<z_stream>();
        if (inflateInit2(stream.get(), gzipWindow) != Z_OK) {
            stream.reset();
            current = State::CannotRead;
        }
    }
    return current == State::Good;
}

bool DataFile::refill()
{
    if (!progress(file.pos())) {
        current = State::Interrupted;
        return false;
    }
    const qint64 count = file.read(input.data(), qint64(input.size()));
    inputStart = 0;
    inputEnd = size_t(std::max<qint64>(count, 0));
    if (count < 0)
        current = State::CannotRead;
    return count > 0;
}

size_t DataFile::read(char *to, size_t capacity)
{
    if (current != State::Good)
        return 0;
    return compressed ? readInflated(to, capacity) : readPlain(to, capacity);
}

size_t DataFile::readPlain(char *to, size_t capacity)
{
    if (inputStart == inputEnd && !refill())
        return 0;
    const size_t count = std::min(capacity, inputEnd - inputStart);
    std::memcpy(to, input.data() + inputStart, count);
    inputStart += count;
    return count;
}

/// After the end of a member: true when another follows.
bool DataFile::startNextMember()
{
    if (inputStart == inputEnd && !refill())
        return false;
    // Archives on tape are padded with zeros.
    while (input[inputStart] == '\0') {
        if (++inputStart == inputEnd && !refill())
            return false;
    }
    if (input[inputStart] != gzipMagic[0]) {
        current = State::TrailingBytes;
        return false;
    }
    inflateReset(stream.get());
    memberEnded = false;
    return true;
}

size_t DataFile::readInflated(char *to, size_t capacity)
{
    stream->next_out = reinterpret_cast<Bytef *>(to);
    stream->avail_out = uInt(capacity);
    while (stream->avail_out == capacity) {
        if (memberEnded && !startNextMember())
            return 0;
        if (inputStart == inputEnd && !refill()) {
            if (current == State::Good)
                current = State::Truncated;
            return 0;
        }
        stream->next_in = reinterpret_cast<Bytef *>(input.data() + inputStart);
        stream->avail_in = uInt(inputEnd - inputStart);
        const int result = inflate(stream.get(), Z_NO_FLUSH);
        inputStart = inputEnd - stream->avail_in;
        if (result == Z_STREAM_END) {
            memberEnded = true;
        } else if (result != Z_OK && result != Z_BUF_ERROR) {
            current = State::Corrupt;
            return 0;
        }
    }
    return capacity - stream->avail_out;
}

std::string DataFile::problem() const
{
    switch (current) {
    case State::Good:
        return {};
    case State::CannotOpen:
        return "无法打开：" + file.errorString().toStdString();
    case State::CannotRead:
        return "无法读取：" + file.errorString().toStdString();
    case State::Truncated:
        return "压缩数据不完整，请确认文件已传完";
    case State::Corrupt:
        return "压缩数据已损坏，请重新获取文件";
    case State::TrailingBytes:
        return "压缩数据之后还有多余的内容";
    case State::Interrupted:
        return "读取已中止";
    }
    return {};
}

} // namespace feed
