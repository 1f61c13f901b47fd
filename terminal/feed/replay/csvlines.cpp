#include "feed/replay/csvlines.h"

#include "feed/replay/datafile.h"

#include <algorithm>
#include <cstring>

namespace feed {

CsvLines::CsvLines(DataFile &readFile) : file(readFile), buffer(4 * longestLine) {}

/// Moves what is left to the front and reads behind it. False when nothing more comes.
bool CsvLines::fill()
{
    std::memmove(buffer.data(), buffer.data() + start, end - start);
    end -= start;
    start = 0;
    const size_t count = file.read(buffer.data() + end, buffer.size() - end);
    end += count;
    return count > 0;
}

void CsvLines::skipByteOrderMark()
{
    static constexpr char mark[] = {'\xef', '\xbb', '\xbf'};
    while (end - start < sizeof(mark) && fill()) {
    }
    if (end - start >= sizeof(mark) && std::memcmp(buffer.data() + start, mark, sizeof(mark)) == 0)
        start += sizeof(mark);
}

void CsvLines::skipRestOfLongLine()
{
    isInLongLine = false;
    for (;;) {
        if (const void *found = std::memchr(buffer.data() + start, '\n', end - start)) {
            start = size_t(static_cast<const char *>(found) - buffer.data()) + 1;
            return;
        }
        start = end;
        if (!fill())
            return;
    }
}

bool CsvLines::next(CsvLine &line)
{
    if (lineNumber == 0)
        skipByteOrderMark();
    if (isInLongLine)
        skipRestOfLongLine();
    size_t searched = start;
    const char *lineEnd = nullptr;
    for (;;) {
        lineEnd = static_cast<const char *>(std::memchr(buffer.data() + searched, '\n', end - searched));
        if (lineEnd || end - start > longestLine)
            break;
        const size_t known = end - start;
        if (!fill())
            break;
        searched = start + known;
    }
    if (!lineEnd && start == end)
        return false;

    const size_t length = lineEnd ? size_t(lineEnd - buffer.data()) - start : end - start;
    line.number = ++lineNumber;
    line.tooLong = length > longestLine;
    line.terminated = lineEnd != nullptr || line.tooLong;
    line.text = {buffer.data() + start, std::min(length, longestLine)};
    isInLongLine = line.tooLong && !lineEnd;
    start += length + (lineEnd ? 1 : 0);
    if (!line.text.empty() && line.text.back() == '\r')
        line.text.remove_suffix(1);
    return true;
}

} // namespace feed
