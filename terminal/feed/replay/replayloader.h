#pragma once

#include "feed/feedbatch.h"
#include "feed/replay/replayfile.h"
#include "feed/replay/replayinputs.h"

#include <QStringList>

#include <functional>
#include <string>
#include <vector>

namespace feed {

class BatchWriter;
class ReplayStore;

/// Reads recorded files into a store and says what is wrong with them. Bad lines are left out; a file that cannot be
/// trusted as a whole, a path that leads to nothing, and no row at all make a replay impossible. Files of unknown
/// columns are passed over with a warning where they stand in a folder.
class ReplayLoader
{
public:
    ReplayLoader(ReplayStore &store, BatchWriter &writer, std::function<bool()> keepGoing);

    /// Paths of files and of folders, which are read with all below them. False when nothing can be played.
    bool load(const QStringList &paths);

private:
    /// False when loading was given up.
    bool loadFile(const ReplayInput &input);
    void passOver(const ReplayInput &input, const ReplayFile &file);
    void checkFolders(const QStringList &folders);
    void settle();
    void tell(FeedMessage message);
    void tell(FeedMessage::Severity severity, const std::string &file, const std::string &text);

    ReplayStore &store;
    BatchWriter &writer;
    const std::function<bool()> keepGoing;
    std::vector<int> usedFilesOfFolder;
    int passedOver = 0;
    qint64 bytesOfEarlierFiles = 0;
    bool failed = false;
};

} // namespace feed
