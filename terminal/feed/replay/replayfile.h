#pragma once

#include "feed/replay/csvfields.h"
#include "feed/replay/csvlines.h"
#include "feed/replay/datafile.h"
#include "feed/replay/fieldreader.h"
#include "feed/replay/filereport.h"
#include "feed/replay/rowdecoder.h"

#include <memory>
#include <optional>

namespace feed {

/// Reads one recorded file into a store.
class ReplayFile
{
public:
    enum class Outcome
    {
        Loaded,
        Unknown,    ///< not one of the formats; nothing is reported but what `whyUnknown` says
        Unusable,   ///< cannot be trusted as a whole; reported as fatal
        Interrupted ///< the progress callback said no
    };

    ReplayFile(ReplayStore &store, FileReport &report, DataFile::Progress progress);

    Outcome load(const QString &path, const std::string &pathText);
    const std::string &whyUnknown() const { return unknownReason; }
    /// The first header of a file of unknown columns, empty for one that has none.
    const std::string &firstHeader() const { return unknownHeader; }

private:
    /// Reads the header line and finds the format; nothing when rows can follow.
    std::optional<Outcome> readHeaders();
    bool headersAreUnique(const std::vector<std::string_view> &needed);
    Outcome readRows(quint16 fileNumber);
    /// Splits the line; false, reported, when that is not possible.
    bool splitLine(const CsvLine &line);
    void rejectLine(const CsvLine &line, int column, const std::string &text);
    Outcome endOfRows(qint64 lastLine, bool hasRows);

    ReplayStore &store;
    FileReport &report;
    DataFile data;
    CsvLines lines;
    CsvFields fields;
    std::unique_ptr<FieldReader> reader;
    std::unique_ptr<RowDecoder> decoder;
    std::string unknownReason;
    std::string unknownHeader;
};

} // namespace feed
