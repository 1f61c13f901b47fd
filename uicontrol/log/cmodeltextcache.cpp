#include "log/cmodeltextcache.h"

#include <algorithm>
#include <boost/smart_ptr/make_shared.hpp>

#include "log/clogblockqueue.h"
#include "log/clogtextmeasure.h"
#include "zb/cuiresource.h"

namespace KV {

namespace {

using Lock = boost::unique_lock<boost::mutex>;

constexpr int widestIgnored = 100; ///< pixels; no view that narrow is worth wrapping for

/// Number of the newest source line of the process, over all caches. Goes on from the smallest int after the largest.
std::atomic<unsigned> newestLineId{0};

bool isEarlier(int lineId, int other)
{
    return static_cast<int>(static_cast<unsigned>(lineId) - static_cast<unsigned>(other)) < 0;
}

QFont logFont()
{
    return CLogTextMeasure::ownCopy(*ZB::CUiResource::instance()->getFont(QStringLiteral("fnt_output_log_text")));
}

LogTextPtr pieceAt(const LogTextList &list, int index)
{
    const bool inside = index >= 0 && static_cast<std::size_t>(index) < list.size();
    return inside ? list[static_cast<std::size_t>(index)] : LogTextPtr();
}

} // namespace

CModelTextCache::CModelTextCache()
{
    settings.font = logFont();
}

CModelTextCache::~CModelTextCache() = default;

void CModelTextCache::dataCallBack(const QString &text, int level)
{
    LogBlock block;
    block.sink = weak_from_this().lock();
    if (!block.sink)
        return;
    block.text = text;
    block.level = level;
    block.generation = generation.load();
    CLogBlockQueue::instance().add(std::move(block));
}

void CModelTextCache::doData(const QString &text, int level)
{
    LogBlock block;
    block.text = text;
    block.level = level;
    block.generation = generation.load();
    appendBlock(block, callerLane);
}

void CModelTextCache::takeBlock(const LogBlock &block)
{
    appendBlock(block, workerLane);
}

int CModelTextCache::keptLines() const
{
    return longestList.load();
}

/// Cuts with the lock open and appends under it; what the settings have overtaken meanwhile is cut once more.
void CModelTextCache::appendBlock(const LogBlock &block, Lane &lane)
{
    for (;;) {
        LogCutSettings with;
        unsigned revision = 0;
        {
            const Lock lock(mutex);
            with = settings;
            revision = settingsRevision;
        }
        LogTextList pieces;
        int lines = 0;
        qint64 dropped = 0;
        if (block.generation == generation.load()) {
            const Lock cutting(lane.mutex);
            lane.maker.use(with);
            const auto most = static_cast<std::size_t>(keptLines());
            lines = lane.maker.makeBlock(block.text, block.level, most, pieces, dropped);
        }

        LogTextList trimmed; // freed with the lock open
        const Lock lock(mutex);
        if (block.generation != generation.load())
            return;
        if (revision != settingsRevision)
            continue;
        const unsigned skipped = static_cast<unsigned>(block.skipped);
        const unsigned before = newestLineId.fetch_add(skipped + static_cast<unsigned>(lines)) + skipped;
        for (const LogTextPtr &piece : pieces)
            piece->lineId = static_cast<int>(before + static_cast<unsigned>(piece->lineId));
        appendPieces(pieces, dropped, block.level, trimmed);
        changed = true;
        return;
    }
}

/// dropped: pieces in front of these that would have left the lists again at once.
void CModelTextCache::appendPieces(const LogTextList &pieces, qint64 dropped, int level, LogTextList &trimmed)
{
    List &levelList = levelLines[level];
    allLines.trimmed += dropped;
    levelList.trimmed += dropped;
    for (const LogTextPtr &piece : pieces) {
        for (List *list : {&allLines, &levelList}) {
            if (list->pieces.size() > static_cast<std::size_t>(maxLines)) {
                trimmed.push_back(std::move(list->pieces.front()));
                list->pieces.pop_front();
                ++list->trimmed;
            }
            list->pieces.push_back(piece);
        }
    }
}

void CModelTextCache::clear()
{
    LogTextList all; // both freed with the lock open
    std::map<int, List> levels;
    const Lock lock(mutex);
    ++generation;
    all.swap(allLines.pieces);
    allLines.trimmed = 0;
    levels.swap(levelLines);
    longestList = maxLines + 1;
    changed = true;
}

boost::shared_ptr<LogTextData> CModelTextCache::getData(int index)
{
    const Lock lock(mutex);
    return pieceAt(allLines.pieces, index);
}

boost::shared_ptr<LogTextData> CModelTextCache::getDataByLevel(int index, int level)
{
    const Lock lock(mutex);
    return pieceAt(levelLines[level].pieces, index);
}

int CModelTextCache::getDataSize()
{
    const Lock lock(mutex);
    return static_cast<int>(allLines.pieces.size());
}

int CModelTextCache::getDataSizeByLevel(int level)
{
    const Lock lock(mutex);
    return static_cast<int>(levelLines[level].pieces.size());
}

const CModelTextCache::List *CModelTextCache::findList(std::optional<int> level) const
{
    if (!level)
        return &allLines;
    const auto found = levelLines.find(*level);
    return found == levelLines.end() ? nullptr : &found->second;
}

CModelTextCache::ListState CModelTextCache::getState(std::optional<int> level) const
{
    const Lock lock(mutex);
    const List *list = findList(level);
    return list ? ListState{static_cast<int>(list->pieces.size()), list->trimmed} : ListState{};
}

std::vector<LogTextPtr> CModelTextCache::getPieces(std::optional<int> level, int first, int count,
                                                   ListState *state) const
{
    const Lock lock(mutex);
    const List *list = findList(level);
    const qint64 size = list ? static_cast<qint64>(list->pieces.size()) : 0;
    if (state)
        *state = list ? ListState{static_cast<int>(size), list->trimmed} : ListState{};
    const qint64 begin = std::clamp<qint64>(first, 0, size);
    const qint64 end = std::clamp<qint64>(qint64{first} + count, begin, size);
    if (begin == end)
        return {};
    return std::vector<LogTextPtr>(list->pieces.begin() + begin, list->pieces.begin() + end);
}

void CModelTextCache::getAllText(QString &out)
{
    std::vector<LogTextPtr> pieces = getPieces(std::nullopt, 0, getDataSize());
    qint64 length = out.size() + static_cast<qint64>(pieces.size());
    for (const LogTextPtr &piece : pieces)
        length += piece->text.size();
    out.reserve(static_cast<int>(std::min<qint64>(length, 1 << 30)));

    int previous = -1;
    for (const LogTextPtr &piece : pieces) {
        if (piece->lineId != previous && piece != pieces.back())
            out += QLatin1Char('\n');
        previous = piece->lineId;
        out += piece->text;
    }
}

bool CModelTextCache::takeChanged()
{
    return changed.exchange(false);
}

bool CModelTextCache::isAutoLine() const
{
    const Lock lock(mutex);
    return settings.autoLine;
}

int CModelTextCache::getSplitWidth() const
{
    const Lock lock(mutex);
    return settings.splitWidth;
}

void CModelTextCache::setAutoLine(bool on)
{
    {
        const Lock lock(mutex);
        if (on == settings.autoLine)
            return;
        settings.autoLine = on;
        ++settingsRevision;
    }
    doReset();
}

void CModelTextCache::setSplitWidth(int width)
{
    {
        const Lock lock(mutex);
        if (width == settings.splitWidth || width <= widestIgnored)
            return;
        settings.splitWidth = width;
        ++settingsRevision;
    }
    doReset();
}

void CModelTextCache::resetFont()
{
    const QFont font = logFont();
    {
        const Lock lock(mutex);
        settings.font = font;
        ++settings.fontRevision;
        ++settingsRevision;
    }
    doReset();
}

void CModelTextCache::doReset()
{
    LogTextList cut; // the old pieces, once swapped; freed with the lock open
    const Lock lock(mutex);
    const Lock cutting(callerLane.mutex);
    callerLane.maker.use(settings);
    const LogTextList &pieces = allLines.pieces;
    std::map<int, std::size_t> cursors;
    for (std::size_t first = 0, last = 0; first < pieces.size(); first = last) {
        while (last < pieces.size() && pieces[last]->lineId == pieces[first]->lineId)
            ++last;
        const LogTextPtr whole = last - first > 1 ? joinLine(first, last, cursors) : pieces[first];
        const QString &text = whole->text;
        if (callerLane.maker.lengths(text.constData(), text.size()).size() == 1)
            cut.push_back(whole);
        else
            callerLane.maker.addPieces(text.constData(), whole->level, whole->lineId, cut);
    }
    cut.swap(allLines.pieces);
    longestList = std::max(maxLines + 1, static_cast<int>(allLines.pieces.size()));
}

/// One piece with the text of all from `first` to before `last`. It takes the place of the first one in its level's
/// list too, where readers may hold the old one. `cursors`: how far the level lists have been walked.
LogTextPtr CModelTextCache::joinLine(std::size_t first, std::size_t last, std::map<int, std::size_t> &cursors)
{
    const LogTextPtr old = allLines.pieces[first];
    const auto whole = boost::make_shared<LogTextData>(*old);
    for (std::size_t i = first + 1; i < last; ++i)
        whole->text += allLines.pieces[i]->text;

    LogTextList &list = levelLines[old->level].pieces;
    std::size_t &cursor = cursors[old->level];
    while (cursor < list.size() && isEarlier(list[cursor]->lineId, old->lineId))
        ++cursor;
    for (std::size_t i = cursor; i < list.size() && list[i]->lineId == old->lineId; ++i)
        if (list[i] == old)
            list[i] = whole;
    return whole;
}

QStringList CModelTextCache::getSplitSize(const QString &line)
{
    LogCutSettings with;
    {
        const Lock lock(mutex);
        with = settings;
    }
    QStringList pieces;
    int start = 0;
    const Lock cutting(callerLane.mutex);
    callerLane.maker.use(with);
    for (const int length : callerLane.maker.lengths(line.constData(), line.size())) {
        pieces << line.mid(start, length);
        start += length;
    }
    return pieces;
}

} // namespace KV
