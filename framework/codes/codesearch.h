#pragma once

#include <QtCore/QMap>
#include <QtCore/QSet>
#include <memory>
#include <vector>

#include "codes/codeindex.h"
#include "frameworkexport.h"

namespace ZB {

/// Which instruments a field offers.
struct CodeFilter
{
    int traderTypes = 0; ///< bits; 0 for no limit
    int kinds = KV::FilterAll;
    bool isTradedOnly = false;
    bool hasWhiteList = false;
    QMap<QString, QSet<QString>> whiteList; ///< codes without exchange by exchange; an empty set allows all of it

    bool allows(const KV::InstrumentItem &item) const;
};

/// Whether a full code stands on a white list.
FRAMEWORK_API bool isOnWhiteList(const QMap<QString, QSet<QString>> &list, const QString &code);

/// A field's view of the index: the hits of what was typed last, of those instruments that it offers. Filters are
/// worked out once per index and filter, not per key stroke. One thread.
class FRAMEWORK_API CodeSearch
{
public:
    void setIndex(std::shared_ptr<const CodeIndex> index);
    void setFilter(const CodeFilter &filter);

    bool hasIndex() const { return index != nullptr; }
    void find(const QString &text);

    const QString &text() const { return searched; }
    const std::vector<CodeHit> &hits() const { return found; }
    const KV::InstrumentItem &item(const CodeHit &hit) const;
    TextPart codePart(const CodeHit &hit) const { return index->codePart(hit, searched); }
    TextPart namePart(const CodeHit &hit) const { return index->namePart(hit, searched); }
    /// Whether the first hit has the typed code, and it alone.
    bool isExact() const;

private:
    std::shared_ptr<const CodeIndex> index;
    CodeFilter filter;
    std::vector<bool> allowed; ///< of each item of the index; empty while it has to be worked out anew
    QString searched;
    std::vector<CodeHit> found;
};

} // namespace ZB
