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
    message.text = "还有 " + std::to_string(leftOut) + " 行有错误或警告，未逐一列出";
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
    message.header = printable(header);
    message.text = std::move(text);
    receiver(std::move(message));
}

std::string printable(std::string_view text)
{
    static constexpr size_t longest = 40;
    std::string result;
    for (const char c : text.substr(0, longest))
        result += (static_cast<unsigned char>(c) < 0x20 || c == 0x7f) ? '?' : c;
    if (text.size() <= longest)
        return result;
    // A cut in the middle of a character would not be UTF-8 any more.
    while (!result.empty() && (static_cast<unsigned char>(result.back()) & 0xc0) == 0x80)
        result.pop_back();
    if (!result.empty() && static_cast<unsigned char>(result.back()) >= 0xc0)
        result.pop_back();
    return result + "…";
}

std::string quotedForMessage(std::string_view text)
{
    return "“" + printable(text) + "”";
}

} // namespace feed
