#pragma once

#include "feed/replay/rowdecoder.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace feed {

/// A kind of recorded file, known by the names of its columns, which may stand in any order and among others.
struct ReplayFormat
{
    std::string_view name;
    std::vector<std::string_view> (*neededColumns)();
    std::unique_ptr<RowDecoder> (*makeDecoder)(const FieldReader &);
};

/// The format that a header line fits best.
struct FormatMatch
{
    const ReplayFormat *format = nullptr;  ///< null when it fits none
    std::vector<std::string_view> missing; ///< columns that the format needs and the file does not have
};

FormatMatch recogniseFormat(const FieldReader &headers);
/// The names of all formats, as they are listed in a message.
std::string knownFormatNames();

} // namespace feed
