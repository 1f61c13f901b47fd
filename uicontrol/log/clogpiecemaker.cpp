#include "log/clogpiecemaker.h"

#include <boost/smart_ptr/make_shared.hpp>

#include "log/cloglinecutter.h"

namespace KV {

CLogPieceMaker::CLogPieceMaker() = default;

CLogPieceMaker::~CLogPieceMaker() = default;

void CLogPieceMaker::use(const LogCutSettings &with)
{
    if (with.fontRevision != settings.fontRevision)
        cutter.reset();
    settings = with;
    if (settings.autoLine && !cutter)
        cutter = std::make_unique<CLogLineCutter>(settings.font);
}

const std::vector<int> &CLogPieceMaker::lengths(const QChar *text, int length)
{
    cuts.clear();
    if (settings.autoLine)
        cutter->cut(reinterpret_cast<const ushort *>(text), length, settings.splitWidth, cuts);
    else
        cuts.push_back(length);
    return cuts;
}

void CLogPieceMaker::addPieces(const QChar *text, int level, int lineId, LogTextList &pieces) const
{
    for (const int size : cuts) {
        auto piece = boost::make_shared<LogTextData>();
        piece->text = QString(text, size);
        piece->level = level;
        piece->lineId = lineId;
        pieces.push_back(std::move(piece));
        text += size;
    }
}

int CLogPieceMaker::makeBlock(const QString &text, int level, std::size_t most, LogTextList &pieces, qint64 &dropped)
{
    int number = 0;
    for (int start = 0, end = 0; end >= 0; start = end + 1) {
        end = text.indexOf(QLatin1Char('\n'), start);
        const int length = (end < 0 ? text.size() : end) - start;
        lengths(text.constData() + start, length);
        addPieces(text.constData() + start, level, ++number, pieces);
        for (; pieces.size() > most; ++dropped)
            pieces.pop_front();
    }
    return number;
}

} // namespace KV
