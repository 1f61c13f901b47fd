#include "feed/feedbatch.h"

namespace feed {

std::string FeedMessage::toText() const
{
    std::string result;
    if (!file.empty())
        result += file + ':';
    if (line > 0)
        result += std::to_string(line) + ':';
    result += result.empty() ? "" : " ";
    if (column > 0)
        result += "column " + std::to_string(column) + (header.empty() ? ": " : " \"" + header + "\": ");
    return result + text;
}

bool FeedBatch::isEmpty() const
{
    return size() == 0 && !finished;
}

size_t FeedBatch::size() const
{
    return instruments.size() + orders.size() + deals.size() + quotes.size() + messages.size();
}

void FeedBatch::clear()
{
    instruments.clear();
    orders.clear();
    deals.clear();
    quotes.clear();
    messages.clear();
    counters = {};
    time = absent<qint64>;
    finished = false;
    failed = false;
}

} // namespace feed
