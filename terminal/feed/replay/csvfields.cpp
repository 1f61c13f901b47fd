#include "feed/replay/csvfields.h"

namespace feed {

namespace {

std::string_view trimmed(std::string_view text)
{
    while (!text.empty() && text.front() == ' ')
        text.remove_prefix(1);
    while (!text.empty() && text.back() == ' ')
        text.remove_suffix(1);
    return text;
}

} // namespace

/// Takes the quoted field whose opening quote is at `position`, and leaves `position` behind the closing one.
bool CsvFields::takeQuoted(std::string_view line, size_t &position)
{
    const size_t first = position + 1;
    bool doubled = false;
    size_t quote = line.find('"', first);
    while (quote != std::string_view::npos && quote + 1 < line.size() && line[quote + 1] == '"') {
        doubled = true;
        quote = line.find('"', quote + 2);
    }
    if (quote == std::string_view::npos)
        return false;
    std::string_view text = line.substr(first, quote - first);
    if (doubled) {
        std::string &plain = unescaped.emplace_back();
        for (size_t i = 0; i < text.size(); ++i) {
            plain += text[i];
            if (text[i] == '"')
                ++i;
        }
        text = plain;
    }
    position = quote + 1;
    while (position < line.size() && line[position] == ' ')
        ++position;
    if (position < line.size() && line[position] != ',')
        return false;
    fields.push_back(trimmed(text));
    return true;
}

bool CsvFields::split(std::string_view line)
{
    fields.clear();
    unescaped.clear();
    for (size_t position = 0;; ++position) {
        while (position < line.size() && line[position] == ' ')
            ++position;
        if (position < line.size() && line[position] == '"') {
            if (!takeQuoted(line, position))
                return false;
        } else {
            const size_t comma = std::min(line.find(',', position), line.size());
            fields.push_back(trimmed(line.substr(position, comma - position)));
            position = comma;
        }
        if (position >= line.size())
            return true;
    }
}

} // namespace feed
