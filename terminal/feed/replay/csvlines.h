#pragma once

#include <QtGlobal>

#include <string_view>
#include <vector>

namespace feed {

class DataFile;

/// One line, without its line end. The text is valid until the next line is asked for.
struct CsvLine
{
    std::string_view text;
    qint64 number = 0;      ///< from 1
    bool terminated = true; ///< false for a last line without a line end; not known of a line that is too long
    bool tooLong = false;   ///< longer than a line may be; `text` is its beginning
};

/// Lines of a file. LF and CRLF end a line; a byte order mark at the start is skipped. A line of any length takes a
/// bounded amount of memory.
class CsvLines
{
public:
    /// Longest line in bytes. The longest that an exchange writes has about a thousand.
    static constexpr size_t longestLine = 64 * 1024;

    explicit CsvLines(DataFile &file);

    /// False at the end of the file or where it cannot be read further.
    bool next(CsvLine &line);

private:
    bool fill();
    void skipByteOrderMark();
    void skipRestOfLongLine();

    DataFile &file;
    std::vector<char> buffer;
    size_t start = 0; ///< of the next line in the buffer
    size_t end = 0;   ///< of what was read
    qint64 lineNumber = 0;
    bool isInLongLine = false; ///< the rest of a line that is too long comes next
};

} // namespace feed
