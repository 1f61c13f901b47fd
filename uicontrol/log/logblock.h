#pragma once

#include <QtCore/QString>
#include <boost/shared_ptr.hpp>

#include "uicontrolexport.h"

namespace KV {

struct LogBlock;

/// Where blocks of log text end up. Part of CModelTextCache.
class UICONTROL_API CLogBlockSink
{
public:
    virtual ~CLogBlockSink();

    /// Takes in a block; on the queue's worker, one block at a time, in the order in which they were queued.
    virtual void takeBlock(const LogBlock &block) = 0;
    /// How many of the newest lines of one level can matter: a line with as many after it is out of every list. Any
    /// thread; asked with the queue locked, so it takes no lock.
    virtual int keptLines() const = 0;
};

/// Text of one level on its way into a cache.
struct LogBlock
{
    boost::shared_ptr<CLogBlockSink> sink;
    QString text; ///< lines, separated by line feeds
    int level = 0;
    unsigned generation = 0; ///< the sink's, when the block was queued
    qint64 skipped = 0;      ///< lines dropped in front of this block, whose numbers are still used up
    int lines = 0;           ///< in the text; counted by the queue
    int filled = 0;          ///< of them, those that are not empty
};

} // namespace KV
