#pragma once

#include <QtCore/QStringList>
#include <atomic>
#include <boost/smart_ptr/enable_shared_from_this.hpp>
#include <boost/thread/mutex.hpp>
#include <map>
#include <optional>
#include <vector>

#include "log/clogpiecemaker.h"
#include "log/logblock.h"
#include "log/logtextdata.h"
#include "uicontrolexport.h"

namespace KV {

/// The lines of a scrolling log, cut into pieces that fit the width of its view: all of them, and by level. Each list
/// keeps its newest 50,001 pieces.
///
/// Any thread may add and read; setAutoLine, setSplitWidth and resetFont are for the GUI thread. Blocks are cut on the
/// worker of CLogBlockQueue and appended whole, in the order of the calls; no reader waits while one is cut. To be
/// owned by a boost::shared_ptr, or it takes nothing: a queued block keeps its cache alive. CHpfLogWidget has one of
/// its own, which programs do not see.
class UICONTROL_API CModelTextCache : public boost::enable_shared_from_this<CModelTextCache>, public CLogBlockSink
{
public:
    /// Takes the log font from the resource service; GUI thread.
    CModelTextCache();
    ~CModelTextCache() override;

    CModelTextCache(const CModelTextCache &) = delete;
    CModelTextCache &operator=(const CModelTextCache &) = delete;

    /// Queues a block of lines, separated by "\n" (with an empty one behind a trailing "\n"), and returns at once while
    /// less than 64 MiB are queued in the process. Past that other threads wait for room; the GUI thread does not:
    /// queued lines that could not survive the limit are then dropped, and their numbers used up.
    void dataCallBack(const QString &text, int level);
    /// Empties all lists and drops what was queued before.
    void clear();

    /// The piece at an index; empty outside the list.
    boost::shared_ptr<LogTextData> getData(int index);
    boost::shared_ptr<LogTextData> getDataByLevel(int index, int level);
    int getDataSize();
    int getDataSizeByLevel(int level);
    /// Appends all text to `out`. Pieces of one line are joined; a line feed stands before each line, unless its first
    /// piece is the last of all.
    void getAllText(QString &out);

    /// Wraps long lines at the split width; cuts all lines anew at once, on the caller's thread.
    void setAutoLine(bool on);
    bool isAutoLine() const;
    /// Width in pixels at which lines wrap; cuts all lines anew at once. Ignored when 100 or less.
    void setSplitWidth(int width);
    int getSplitWidth() const;
    /// Takes the log font anew and cuts all lines anew at once: after a change of theme or scale.
    void resetFont();

    /// Whether something was added or cleared since the last call.
    bool takeChanged();

    struct ListState
    {
        int size = 0;
        qint64 trimmed = 0; ///< pieces that have left the front of the list since clear()
    };
    /// Of one level's list, or of the list of all.
    ListState getState(std::optional<int> level) const;
    /// Up to `count` pieces from `first` on, and the state of their list, in one step.
    std::vector<LogTextPtr> getPieces(std::optional<int> level, int first, int count, ListState *state = nullptr) const;

protected:
    /// Appends a block, on the calling thread.
    void doData(const QString &text, int level);
    /// Joins the pieces of all lines and cuts them anew. The level lists stay as they were cut, but for the first piece
    /// of each line of several pieces, which has the whole text from then on.
    void doReset();
    /// The pieces of one source line with the present width and wrapping.
    QStringList getSplitSize(const QString &line);

private:
    struct List
    {
        LogTextList pieces;
        qint64 trimmed = 0;
    };
    struct Lane
    {
        boost::mutex mutex;
        CLogPieceMaker maker;
    };

    void takeBlock(const LogBlock &block) override;
    int keptLines() const override;
    void appendBlock(const LogBlock &block, Lane &lane);
    void appendPieces(const LogTextList &pieces, qint64 dropped, int level, LogTextList &trimmed);
    LogTextPtr joinLine(std::size_t first, std::size_t last, std::map<int, std::size_t> &cursors);
    const List *findList(std::optional<int> level) const;

    static constexpr int maxLines = 50000;

    mutable boost::mutex mutex; ///< guards everything down to settingsRevision
    List allLines;
    std::map<int, List> levelLines;
    LogCutSettings settings;
    unsigned settingsRevision = 0; ///< counts changes of the settings
    std::atomic<bool> changed{false};
    std::atomic<unsigned> generation{0};        ///< counts clear(); changed with the mutex held
    std::atomic<int> longestList{maxLines + 1}; ///< pieces that the longest list holds when full
    Lane workerLane;
    Lane callerLane; ///< of all other threads; its mutex is taken last
};

} // namespace KV
