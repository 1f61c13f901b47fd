#include "feed/replay/replayformat.h"

#include "feed/replay/futurestickdecoder.h"
#include "feed/replay/shanghaiorderdecoder.h"
#include "feed/replay/shanghaitradedecoder.h"
#include "feed/replay/shenzhentradedecoder.h"
#include "feed/replay/stocksnapshotdecoder.h"

namespace feed {

namespace {

template <typename Decoder>
constexpr ReplayFormat formatOf(std::string_view name)
{
    return {name, &Decoder::neededColumns,
            [](const FieldReader &in) -> std::unique_ptr<RowDecoder> { return std::make_unique<Decoder>(in); }};
}

constexpr ReplayFormat formats[] = {
    formatOf<ShanghaiOrderDecoder>("沪市委托"),    formatOf<ShanghaiTradeDecoder>("沪市成交"),
    formatOf<ShenzhenTradeDecoder>("深市成交"),    formatOf<StockSnapshotDecoder>("股票快照"),
    formatOf<FuturesTickDecoder>("期货 CTP 行情"),
};

std::vector<std::string_view> missingColumns(const FieldReader &headers, const std::vector<std::string_view> &needed)
{
    std::vector<std::string_view> missing;
    for (const std::string_view name : needed)
        if (headers.column(name) < 0)
            missing.push_back(name);
    return missing;
}

} // namespace

FormatMatch recogniseFormat(const FieldReader &headers)
{
    // The formats share columns such as date and code; a file belongs to one when it has nearly all of that one's.
    FormatMatch best;
    double bestShare = 0.6;
    for (const ReplayFormat &format : formats) {
        const auto needed = format.neededColumns();
        auto missing = missingColumns(headers, needed);
        const double share = 1.0 - double(missing.size()) / double(needed.size());
        if (share > bestShare) {
            bestShare = share;
            best = {&format, std::move(missing)};
        }
    }
    return best;
}

std::string knownFormatNames()
{
    std::string names;
    for (const ReplayFormat &format : formats)
        names += (names.empty() ? "" : "、") + std::string(format.name);
    return names;
}

} // namespace feed
