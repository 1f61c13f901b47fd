#include "feed/feedbatch.h"

namespace feed {

std::string FeedMessage::toText() const
{
    std::string place = file;
    const auto add = [&place](const std::string &part) { place += (place.empty() ? "" : " ") + part; };
    if (line > 0)
        add("第 " + std::to_string(line) + " 行");
    if (column > 0)
        add("第 " + std::to_string(column) + " 列" + (header.empty() ? "" : "“" + header + "”"));
    return place.empty() ? text : place + "：" + text;
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
