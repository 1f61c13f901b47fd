#include "feed/replay/filereport.h"

#include <utility>

namespace feed {

FileReport::FileReport(std::string reportedFile, Receiver messageReceiver)
    : file(std::move(reportedFile)), receiver(std::move(messageReceiver))
{
}

FileReport::~FileReport()
{
    if (leftOut == 0)
        return;
    FeedMessage message;
    message.severity = errors > 0 ? Severity::Error : Severity::Warning;
    message.file = file;
    message.text = std::to_string(leftOut) + " further lines with errors or warnings, not listed";
    receiver(std::move(message));
}

void FileReport::add(Severity severity, std::string text, int column, std::string_view header)
{
    errors += severity != Severity::Warning;
    if (sent >= fullMessages && severity != Severity::Fatal) {
        ++leftOut;
        return;
    }
    ++sent;
    FeedMessage message;
    message.severity = severity;
    message.file = file;
    message.line = line;
    message.column = column;
    message.header = header;
    message.text = std::move(text);
    receiver(std::move(message));
}

std::string quotedForMessage(std::string_view value)
{
    static constexpr size_t longest = 40;
    std::string result = "\"";
    for (const char c : value.substr(0, longest))
        result += (static_cast<unsigned char>(c) < 0x20 || c == 0x7f) ? '?' : c;
    // A cut in the middle of a character would not be UTF-8 any more.
    if (value.size() > longest) {
        while (result.size() > 1 && (static_cast<unsigned char>(result.back()) & 0xc0) == 0x80)
            result.pop_back();
        if (static_cast<unsigned char>(result.back()) >= 0xc0)
            result.pop_back();
        result += "...";
    }
    return result + '"';
}

} // namespace feed
