// What a paged model tells its log of details.

#include <log4cxx/logger.h>

#include "pagemodel/pagemodelcore.h"
#include "utils/clogcenter.h"

namespace KV {

namespace {

constexpr int debugId = 911;

// clang-format off
constexpr const char *sortMessage = "[Model] [{0}] sort col id = {1}, order = {2}.";
constexpr const char *appendMessage = "[Model] [{0}] [ADD] key = {1}, seq = {2} : append.";
constexpr const char *prependMessage = "[Model] [{0}] [ADD] key = {1}, seq = {2} : prepend.";
constexpr const char *notPassedMessage = "[Model] [{0}] [ADD] key = {1}, seq = {2} : filter not passed.";
constexpr const char *coverMessage =
    "[Model] [{0}] [ADD] key = {1}, seq = {2} : idxAll = {3}, all_size = {4}, cover.";
constexpr const char *insertMessage =
    "[Model] [{0}] [ADD] key = {1}, seq = {2} : idx_insert = {3}, size = {4}, insert with order.";
constexpr const char *insertAllMessage =
    "[Model] [{0}] [ADD] key = {1}, seq = {2} : idxAll_insert = {3}, all_size = {4}, insert with order.";
constexpr const char *updateMessage =
    "[Model] [{0}] [UPDATE] key = {1}, seq = {2} : <all {3}> idxAll = {4}, all_size = {5}, <{6}> idx = {7}, size = {8}";
// clang-format on

} // namespace

bool PageModelCore::detailsWanted()
{
    return utils::CLogCenter::instance()->isDebugIdEnabled(debugId) && utils::getLogger("KDDbgFile")->isDebugEnabled();
}

void PageModelCore::writeDetails(const std::vector<std::string> &messages)
{
    if (messages.empty())
        return;
    const log4cxx::LoggerPtr logger = utils::getLogger("KDDbgFile");
    for (const std::string &message : messages)
        LOG4CXX_DEBUG(logger, fmt::format("[dbg_id={0}] {1}", debugId, message));
}

void PageModelCore::logSort(int column, int order)
{
    if (logging)
        log(sortMessage, owner, column, order);
}

void PageModelCore::logNotPassed(quint32 slot)
{
    if (logging)
        logSlot(notPassedMessage, slot);
}

void PageModelCore::logUnsorted(quint32 slot, bool append)
{
    if (logging)
        logSlot(append ? appendMessage : prependMessage, slot);
}

void PageModelCore::logInsert(quint32 slot, int index, int size)
{
    if (logging)
        logSlot(insertMessage, slot, index, size);
}

void PageModelCore::logInsertAll(quint32 slot, int index)
{
    if (logging)
        logSlot(insertAllMessage, slot, index, all.size());
}

void PageModelCore::logCover(quint32 slot, int index)
{
    if (logging)
        logSlot(coverMessage, slot, index, all.size());
}

/// Every record of the visible list is in the all list, so that its place there is always found.
void PageModelCore::logUpdate(quint32 slot, int allIndex, int visibleIndex, bool passes)
{
    if (logging)
        logSlot(updateMessage, slot, "pass", allIndex, all.size(), passes ? "pass" : "FAIL", visibleIndex,
                visible.size());
}

} // namespace KV
