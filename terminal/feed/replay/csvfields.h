#pragma once

#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace feed {

/// The fields of one line: separated by commas, in double quotes where the writer pleased, blanks around them dropped.
/// A quote must be closed in its line; otherwise one missing quote would swallow the rest of a file.
class CsvFields
{
public:
    /// Splits. The fields refer to `line` or to this object and are valid until the next call. False when a quote is
    /// not closed or something stands behind a closing quote; badField() is the field then.
    bool split(std::string_view line);
    const std::vector<std::string_view> &values() const { return fields; }
    /// Number of the field that could not be read, from 1.
    int badField() const { return int(fields.size()) + 1; }

private:
    bool takeQuoted(std::string_view line, size_t &position);

    std::vector<std::string_view> fields;
    std::deque<std::string> unescaped; ///< fields that held doubled quotes; does not move its elements
};

} // namespace feed
