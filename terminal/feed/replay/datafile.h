#pragma once

#include <QFile>

#include <functional>
#include <memory>
#include <string>
#include <vector>

struct z_stream_s;

namespace feed {

/// Bytes of a file, unpacked if its content says that it is gzip (several members in a row included). The name does not
/// matter. Memory does not depend on the size of the file.
class DataFile
{
public:
    enum class State
    {
        Good,
        CannotOpen,
        CannotRead,
        Truncated,     ///< the compressed data ends too early; what came before may be used
        Corrupt,       ///< the compressed data is damaged; nothing that was read can be trusted
        TrailingBytes, ///< all was read and is good, but more bytes follow that belong to nothing
        Interrupted    ///< the progress callback said no
    };

    /// Called with each block that is taken from the disk, with the bytes taken so far; false gives up.
    using Progress = std::function<bool(qint64 bytes)>;

    explicit DataFile(Progress progress);
    ~DataFile();

    bool open(const QString &path);
    /// Reads up to `capacity` bytes; 0 at the end and after a failure, see state().
    size_t read(char *to, size_t capacity);

    State state() const { return current; }
    /// What is wrong, for the user; empty while all is good.
    std::string problem() const;
    bool isCompressed() const { return compressed; }

private:
    size_t readPlain(char *to, size_t capacity);
    size_t readInflated(char *to, size_t capacity);
    bool refill();
    bool startNextMember();

    const Progress progress;
    QFile file;
    std::vector<char> input;
    size_t inputStart = 0;
    size_t inputEnd = 0;
    std::unique_ptr<z_stream_s> stream;
    bool compressed = false;
    bool memberEnded = false;
    State current = State::Good;
};

} // namespace feed
