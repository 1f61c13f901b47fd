#include "pagemodel/pagerows.h"

#include "kdservice/cdealdetailv2.h"
#include "kdservice/corderdetailv2.h"

namespace KV {

quint32 PageRows::findHash(quint64 hash) const
{
    return index.findHash(hash);
}

quint32 PageRows::find(const kdservice::IData &record) const
{
    return index.find(record.getKey(), record.hashKey());
}

quint32 PageRows::add(const std::string &key, quint64 hash, const boost::shared_ptr<CHpfPageData> &page)
{
    quint32 slot = nextSlot;
    if (freeSlots.empty()) {
        ++nextSlot;
        rows.ensure(slot);
    } else {
        slot = freeSlots.back();
        freeSlots.pop_back();
    }
    index.insert(key, hash, slot);
    take(slot, page);
    return slot;
}

void PageRows::replace(quint32 slot, const boost::shared_ptr<CHpfPageData> &page)
{
    take(slot, page);
}

void PageRows::remove(quint32 slot)
{
    index.remove(slot);
    rows[slot] = PageRow();
    freeSlots.push_back(slot);
}

void PageRows::take(quint32 slot, const boost::shared_ptr<CHpfPageData> &page)
{
    PageRow &row = rows[slot];
    row.page = page;
    row.record = page->getIData();
    row.order = dynamic_cast<const kdservice::COrderDetailV2 *>(row.record.get());
    row.deal = row.order ? nullptr : dynamic_cast<const kdservice::CDealDetailV2 *>(row.record.get());
    row.entrySequence = row.order ? row.order->entrySequence() : row.deal ? row.deal->entrySequence() : 0;
}

} // namespace KV
