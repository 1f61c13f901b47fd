#include "feed/replay/packedquotes.h"

#include "feed/instrumentrules.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <unordered_set>

namespace feed {

namespace {

/// Seven bits a byte, least first, the top bit set on all but the last; small numbers of either sign stay short.
/// Zero stands for an absent value.
class Packer
{
public:
    explicit Packer(std::string &target) : out(target) {}

    void number(quint64 value)
    {
        for (; value >= 0x80; value >>= 7)
            out += char(0x80 | (value & 0x7f));
        out += char(value);
    }
    void count(qint64 value) { number(value == absent<qint64> ? 0 : foldSign(value) + 1); }
    /// As the difference to the price before, since the prices of a snapshot lie close together.
    void price(double value)
    {
        if (value == absent<double>) {
            number(0);
            return;
        }
        const qint64 units = priceUnits(value);
        number(foldSign(units - lastUnits) + 1);
        lastUnits = units;
    }
    void raw(double value) { out.append(reinterpret_cast<const char *>(&value), sizeof(value)); }

private:
    static quint64 foldSign(qint64 value) { return (quint64(value) << 1) ^ quint64(value >> 63); }

    std::string &out;
    qint64 lastUnits = 0;
};

class Unpacker
{
public:
    explicit Unpacker(const char *source) : in(source) {}

    quint64 number()
    {
        quint64 result = 0;
        int shift = 0;
        while (*in & 0x80) {
            result |= quint64(*in++ & 0x7f) << shift;
            shift += 7;
        }
        return result | quint64(*in++) << shift;
    }
    qint64 count()
    {
        const quint64 value = number();
        return value == 0 ? absent<qint64> : unfoldSign(value - 1);
    }
    double price()
    {
        const quint64 value = number();
        if (value == 0)
            return absent<double>;
        lastUnits += unfoldSign(value - 1);
        return priceOfUnits(lastUnits);
    }
    double raw()
    {
        double value = 0;
        std::memcpy(&value, in, sizeof(value));
        in += sizeof(value);
        return value;
    }

private:
    static qint64 unfoldSign(quint64 value) { return qint64(value >> 1) ^ -qint64(value & 1); }

    const char *in;
    qint64 lastUnits = 0;
};

constexpr double QuoteSnapshot::*prices[] = {
    &QuoteSnapshot::last,       &QuoteSnapshot::previousClose, &QuoteSnapshot::previousSettlement,
    &QuoteSnapshot::open,       &QuoteSnapshot::high,          &QuoteSnapshot::low,
    &QuoteSnapshot::upperLimit, &QuoteSnapshot::lowerLimit};

/// Levels up to the last that exists; those behind it take no byte.
size_t usedLevels(const std::array<QuoteLevel, QuoteSnapshot::depth> &levels)
{
    size_t used = levels.size();
    while (used > 0 && levels[used - 1].price == absent<double>)
        --used;
    return used;
}

} // namespace

void PackedQuotes::append(const QuoteSnapshot &quote)
{
    std::string packed;
    Packer out(packed);
    out.number(quint64(quote.phase));
    for (const auto price : prices)
        out.price(quote.*price);
    out.count(quote.volume);
    out.raw(quote.turnover);
    out.count(quote.openInterest);
    for (const auto *levels : {&quote.bids, &quote.asks}) {
        const size_t used = usedLevels(*levels);
        out.number(used);
        for (size_t i = 0; i < used; ++i) {
            out.price((*levels)[i].price);
            out.count((*levels)[i].quantity);
            out.count((*levels)[i].orders == absent<int> ? absent<qint64> : (*levels)[i].orders);
        }
    }
    entries.push_back({quote.time, content.size()});
    Packer(content).number(packed.size());
    content += packed;
}

qint64 PackedQuotes::settle()
{
    const auto isEarlier = [](const Entry &a, const Entry &b) { return a.time < b.time; };
    if (!std::is_sorted(entries.begin(), entries.end(), isEarlier))
        std::stable_sort(entries.begin(), entries.end(), isEarlier);
    qint64 dropped = 0;
    std::unordered_set<std::string_view> contentsOfTime;
    auto kept = entries.begin();
    for (const Entry &entry : entries) {
        if (kept != entries.begin() && std::prev(kept)->time != entry.time)
            contentsOfTime.clear();
        if (contentsOfTime.insert(bytes(entry)).second)
            *kept++ = entry;
        else
            ++dropped;
    }
    entries.erase(kept, entries.end());
    return dropped;
}

std::string_view PackedQuotes::bytes(const Entry &entry) const
{
    const char *const start = content.data() + entry.offset;
    const quint64 length = Unpacker(start).number();
    const size_t lengthBytes = length < 0x80 ? 1 : length < 0x4000 ? 2 : 3;
    return {start + lengthBytes, length};
}

QuoteSnapshot PackedQuotes::quote(size_t place) const
{
    Unpacker in(bytes(entries[place]).data());
    QuoteSnapshot result;
    result.time = entries[place].time;
    result.phase = TradingPhase(in.number());
    for (const auto price : prices)
        result.*price = in.price();
    result.volume = in.count();
    result.turnover = in.raw();
    result.openInterest = in.count();
    for (auto *levels : {&result.bids, &result.asks}) {
        const size_t used = in.number();
        for (size_t i = 0; i < used; ++i) {
            (*levels)[i].price = in.price();
            (*levels)[i].quantity = in.count();
            const qint64 orders = in.count();
            (*levels)[i].orders = orders == absent<qint64> ? absent<int> : int(orders);
        }
    }
    return result;
}

} // namespace feed
