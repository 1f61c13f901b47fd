#include "codes/codeindex.h"

#include <QtCore/QVector>
#include <algorithm>
#include <string_view>

#include "codes/charreadings.h"

namespace ZB {

namespace {

/// A character of a name in one word: the character itself above, the letters by which it can be typed below.
constexpr int characterShift = 36;
constexpr quint64 letterMask = (quint64(1) << characterShift) - 1;

quint64 unitOf(char32_t character, quint64 letters)
{
    return (quint64(character) << characterShift) | letters;
}

bool answers(quint64 unit, quint64 wanted)
{
    return (unit >> characterShift) == (wanted >> characterShift) || (unit & wanted & letterMask) != 0;
}

/// Marks, stars and blanks in a name are not typed.
bool isTyped(char32_t character)
{
    return QChar::isLetterOrNumber(character);
}

/// Codes are so short that the library's search costs more than it saves.
std::size_t placeIn(std::string_view text, std::string_view part)
{
    for (std::size_t at = 0; at + part.size() <= text.size(); ++at) {
        std::size_t length = 0;
        while (length < part.size() && text[at + length] == part[length])
            ++length;
        if (length == part.size())
            return at;
    }
    return std::string_view::npos;
}

std::string folded(const QString &text)
{
    std::string result;
    for (const uint character : text.toUcs4())
        if (const char32_t small = foldedCharacter(character); small > ' ' && small < 0x7f)
            result += static_cast<char>(small);
    return result;
}

} // namespace

struct CodeIndex::Query
{
    explicit Query(const QString &text) : code(folded(text))
    {
        for (const uint character : text.toUcs4()) {
            const char32_t small = foldedCharacter(character);
            if (!isTyped(small))
                continue;
            const quint64 letter = initialBit(small);
            units.push_back(unitOf(small, letter));
            letters |= letter;
            isWritten = isWritten || letter == 0;
            isCode = isCode && small < 0x7f;
        }
        isCode = isCode && !code.empty();
    }

    bool isEmpty() const { return code.empty() && units.empty(); }

    std::string code;
    std::vector<quint64> units;
    quint64 letters = 0;    ///< a name without these cannot answer
    bool isWritten = false; ///< has characters that stand for themselves only
    bool isCode = true;     ///< can be a part of a code
};

CodeIndex::CodeIndex(std::vector<KV::InstrumentItem> list, CharReadings &readings) : instruments(std::move(list))
{
    std::sort(instruments.begin(), instruments.end(), [](const auto &a, const auto &b) {
        const bool aTraded = a.traderTypes != 0, bTraded = b.traderTypes != 0;
        return aTraded != bTraded ? aTraded : a.code < b.code;
    });
    for (const KV::InstrumentItem &item : instruments) {
        addCode(item.code);
        addName(item.name, readings);
    }
}

CodeIndex::~CodeIndex() = default;

void CodeIndex::addCode(const QString &code)
{
    const std::string text = folded(code);
    const auto start = static_cast<quint32>(codes.size());
    const std::size_t dot = text.rfind('.');
    codes += text;
    codeSpans.push_back({start, static_cast<quint32>(codes.size())});
    quint64 letters = 0;
    for (const char character : text)
        letters |= initialBit(char32_t(character));
    codeLetters.push_back(letters);
    codeEnds.push_back(static_cast<quint32>(start + std::min(dot, text.size())));
}

void CodeIndex::addName(const QString &name, CharReadings &readings)
{
    const auto start = static_cast<quint32>(units.size());
    quint64 letters = 0;
    for (const uint character : name.toUcs4()) {
        const char32_t small = foldedCharacter(character);
        if (!isTyped(small))
            continue;
        const quint64 initials = readings.initialsOf(small);
        units.push_back(unitOf(small, initials));
        letters |= initials;
    }
    unitSpans.push_back({start, static_cast<quint32>(units.size())});
    nameLetters.push_back(letters);
}

/// With or without the exchange, which stands behind the dot or in front ("sh600519").
bool CodeIndex::isCode(std::size_t item, const std::string &text) const
{
    const std::string_view whole = std::string_view(codes).substr(codeSpans[item].start);
    const std::string_view full = whole.substr(0, codeSpans[item].end - codeSpans[item].start);
    const std::string_view bare = whole.substr(0, codeEnds[item] - codeSpans[item].start);
    if (text == bare || text == full)
        return true;
    const std::string_view exchange = full.size() > bare.size() ? full.substr(bare.size() + 1) : std::string_view();
    return !exchange.empty() && text.size() == exchange.size() + bare.size() &&
           std::string_view(text).substr(0, exchange.size()) == exchange &&
           std::string_view(text).substr(exchange.size()) == bare;
}

bool CodeIndex::codeRank(std::size_t item, const Query &query, CodeRank &rank) const
{
    const std::string_view full(codes.data() + codeSpans[item].start, codeSpans[item].end - codeSpans[item].start);
    const std::string_view bare = full.substr(0, codeEnds[item] - codeSpans[item].start);
    if ((codeLetters[item] & query.letters) != query.letters)
        return false;
    const std::size_t place = placeIn(full, query.code);
    if (place == 0) {
        rank = isCode(item, query.code) ? CodeRank::ExactCode : CodeRank::CodePrefix;
        return true;
    }
    if (full.size() > bare.size()) {
        // The exchange in front counts only with a part of the code behind it: "sh" is short for so many names.
        const std::string_view exchange = full.substr(bare.size() + 1);
        const std::string_view text = query.code;
        if (text.size() > exchange.size() && text.substr(0, exchange.size()) == exchange &&
            bare.substr(0, text.size() - exchange.size()) == text.substr(exchange.size())) {
            rank = isCode(item, query.code) ? CodeRank::ExactCode : CodeRank::CodePrefix;
            return true;
        }
    }
    rank = CodeRank::CodePart;
    return place < bare.size();
}

/// Where in the item's characters the query stands, counted in characters; -1 for nowhere.
int CodeIndex::unitPlace(std::size_t item, const Query &query) const
{
    if (query.units.empty() || (nameLetters[item] & query.letters) != query.letters)
        return -1;
    const Span span = unitSpans[item];
    const std::size_t count = span.end - span.start;
    for (std::size_t at = 0; at + query.units.size() <= count; ++at) {
        const quint64 *first = units.data() + span.start + at;
        if (std::equal(query.units.begin(), query.units.end(), first,
                       [](quint64 wanted, quint64 unit) { return answers(unit, wanted); }))
            return static_cast<int>(at);
    }
    return -1;
}

bool CodeIndex::nameRank(std::size_t item, const Query &query, CodeRank &rank) const
{
    const int place = unitPlace(item, query);
    if (place < 0)
        return false;
    const std::size_t count = unitSpans[item].end - unitSpans[item].start;
    if (query.isWritten)
        rank = place == 0 ? CodeRank::NamePrefix : CodeRank::NamePart;
    else if (place > 0)
        rank = CodeRank::InitialsPart;
    else
        rank = count == query.units.size() ? CodeRank::WholeInitials : CodeRank::InitialsPrefix;
    return true;
}

bool CodeIndex::rankOf(std::size_t item, const Query &query, CodeRank &rank) const
{
    CodeRank byCode = CodeRank::CodePart, byName = CodeRank::CodePart;
    const bool hasCode = query.isCode && codeRank(item, query, byCode);
    if (hasCode && byCode <= CodeRank::CodePrefix) {
        rank = byCode;
        return true;
    }
    const bool hasName = nameRank(item, query, byName);
    rank = hasName ? byName : byCode;
    return hasName || hasCode;
}

std::vector<CodeHit> CodeIndex::find(const QString &text, const std::vector<bool> &allowed) const
{
    const Query query(text);
    std::vector<int> found[codeRankCount];
    const bool findsAll = query.isEmpty();
    for (std::size_t item = 0; item < instruments.size(); ++item) {
        CodeRank rank = CodeRank::CodePart;
        if ((allowed.empty() || allowed[item]) && (findsAll || rankOf(item, query, rank)))
            found[static_cast<int>(rank)].push_back(static_cast<int>(item));
    }
    std::vector<CodeHit> hits;
    for (int rank = 0; rank < codeRankCount; ++rank)
        for (const int item : found[rank])
            hits.push_back({item, static_cast<CodeRank>(rank)});
    return hits;
}

TextPart CodeIndex::codePart(const CodeHit &hit, const QString &text) const
{
    const Query query(text);
    if (!query.isCode || (hit.rank != CodeRank::CodePart && hit.rank > CodeRank::CodePrefix))
        return {};
    const auto item = static_cast<std::size_t>(hit.item);
    const std::string_view full(codes.data() + codeSpans[item].start, codeSpans[item].end - codeSpans[item].start);
    const std::size_t place = full.find(query.code);
    if (place != std::string_view::npos)
        return {static_cast<int>(place), static_cast<int>(query.code.size())};
    return {0, static_cast<int>(full.size())};
}

TextPart CodeIndex::namePart(const CodeHit &hit, const QString &text) const
{
    if (hit.rank <= CodeRank::CodePrefix || hit.rank == CodeRank::CodePart)
        return {};
    const Query query(text);
    const auto item = static_cast<std::size_t>(hit.item);
    const int place = unitPlace(item, query);
    TextPart part;
    int unit = 0, start = 0;
    for (const uint character : instruments[item].name.toUcs4()) {
        const int end = start + (QChar::requiresSurrogates(character) ? 2 : 1);
        if (isTyped(foldedCharacter(character))) {
            if (unit == place)
                part.start = start;
            if (unit >= place && unit < place + static_cast<int>(query.units.size()))
                part.length = end - part.start;
            ++unit;
        }
        start = end;
    }
    return place < 0 ? TextPart() : part;
}

} // namespace ZB
