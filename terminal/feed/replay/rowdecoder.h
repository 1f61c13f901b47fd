#pragma once

#include "feed/replay/fieldreader.h"
#include "feed/replay/replaystore.h"
#include "feed/replay/timetext.h"

#include <string>

namespace feed {

/// Reads the rows of one file format into a store. Rows with a value that cannot be read are reported and left out.
class RowDecoder
{
public:
    virtual ~RowDecoder();

    /// The line that `in` stands on, read in `file`.
    virtual void decode(FieldReader &in, ReplayStore &store, quint16 file) = 0;

protected:
    using Column = FieldReader::Column;

    /// Index of the stock with this code, which stands in `column`; the name is taken where it was not known yet.
    int stock(FieldReader &in, ReplayStore &store, Column column, std::string_view code, std::string_view name = {});
    /// The same for a future.
    int future(FieldReader &in, ReplayStore &store, Column column, Column exchange);

private:
    std::string lastCode; ///< rows of one instrument follow each other
    int lastIndex = -1;
};

} // namespace feed
