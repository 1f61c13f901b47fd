#pragma once

#include <QtGui/QFont>
#include <memory>
#include <vector>

#include "log/logtextdata.h"
#include "uicontrolexport.h"

namespace KV {

class CLogLineCutter;

/// What pieces are cut with. Small, so that it can be copied out of a lock.
struct LogCutSettings
{
    QFont font;                ///< shared with nobody who measures
    unsigned fontRevision = 0; ///< another number for another font
    int splitWidth = -1;       ///< pixels
    bool autoLine = false;     ///< whether lines are cut at all
};

/// Makes display pieces of source lines. One thread at a time; it measures anew when the font changes. Part of
/// CModelTextCache, and not exported.
class CLogPieceMaker
{
public:
    CLogPieceMaker();
    ~CLogPieceMaker();

    void use(const LogCutSettings &with);
    /// Lengths of a line's pieces; valid until the next call. None for a line that disappears.
    const std::vector<int> &lengths(const QChar *text, int length);
    /// Appends the pieces of the line whose lengths were asked for last.
    void addPieces(const QChar *text, int level, int lineId, LogTextList &pieces) const;
    /// Appends the pieces of all lines of a block, numbered from 1 on, but keeps no more than the newest `most`.
    /// Returns the number of lines; adds the pieces not kept to `dropped`.
    int makeBlock(const QString &text, int level, std::size_t most, LogTextList &pieces, qint64 &dropped);

private:
    LogCutSettings settings;
    std::unique_ptr<CLogLineCutter> cutter;
    std::vector<int> cuts;
};

} // namespace KV
