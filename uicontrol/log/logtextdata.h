#pragma once

#include <QtCore/QString>
#include <boost/shared_ptr.hpp>
#include <deque>

namespace KV {

/// One display piece of a log: a source line, or the part of it that fits the width of the view. Never changed once a
/// cache has handed it out, so it may be read on any thread.
struct LogTextData
{
    QString text;   ///< without line terminator
    int level = 0;  ///< as given with the block
    int lineId = 0; ///< number of the source line; all pieces of one line have the same
};

using LogTextPtr = boost::shared_ptr<LogTextData>;
using LogTextList = std::deque<LogTextPtr>;

} // namespace KV
