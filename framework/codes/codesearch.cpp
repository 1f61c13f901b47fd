#include "codes/codesearch.h"

namespace ZB {

bool isOnWhiteList(const QMap<QString, QSet<QString>> &list, const QString &code)
{
    const int dot = code.lastIndexOf(QLatin1Char('.'));
    const auto codes = list.constFind(dot < 0 ? QString() : code.mid(dot + 1));
    return codes != list.constEnd() && (codes->isEmpty() || codes->contains(dot < 0 ? code : code.left(dot)));
}

bool CodeFilter::allows(const KV::InstrumentItem &item) const
{
    if (item.traderTypes == 0 ? isTradedOnly : traderTypes != 0 && (item.traderTypes & traderTypes) == 0)
        return false;
    return (item.kind & kinds) != 0 && (!hasWhiteList || isOnWhiteList(whiteList, item.code));
}

void CodeSearch::setIndex(std::shared_ptr<const CodeIndex> other)
{
    if (index == other)
        return;
    index = std::move(other);
    allowed.clear();
    found.clear();
}

void CodeSearch::setFilter(const CodeFilter &other)
{
    filter = other;
    allowed.clear();
    found.clear();
}

void CodeSearch::find(const QString &text)
{
    searched = text;
    found.clear();
    if (index == nullptr)
        return;
    if (allowed.size() != index->items().size()) {
        allowed.clear();
        for (const KV::InstrumentItem &item : index->items())
            allowed.push_back(filter.allows(item));
    }
    found = index->find(text, allowed);
}

const KV::InstrumentItem &CodeSearch::item(const CodeHit &hit) const
{
    return index->items()[static_cast<std::size_t>(hit.item)];
}

bool CodeSearch::isExact() const
{
    return !found.empty() && found[0].rank == CodeRank::ExactCode &&
           (found.size() == 1 || found[1].rank != CodeRank::ExactCode);
}

} // namespace ZB
