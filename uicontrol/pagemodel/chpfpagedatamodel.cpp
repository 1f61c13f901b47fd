#include "pagemodel/chpfpagedatamodel.h"

#include <boost/make_shared.hpp>

#include "kdservice/keyhash.h"
#include "pagemodel/chpfpagedatamodel_p.h"

namespace KV {

CHpfPageDataModel::CHpfPageDataModel(int dataType, kdservice::EVxTraderType traderType, bool appendSeq)
    : core(std::make_unique<PageModelCore>(this, dataType, traderType, appendSeq))
{
}

CHpfPageDataModel::~CHpfPageDataModel() = default;

void CHpfPageDataModel::setLogDetail(bool on)
{
    logDetail = on;
}

CHpfPageDataModel::Result CHpfPageDataModel::addData(const boost::shared_ptr<kdservice::IData> &record)
{
    return record ? addData(boost::make_shared<CHpfPageData>(record)) : Result();
}

CHpfPageDataModel::Result CHpfPageDataModel::addData(const Page &page)
{
    if (!page || !page->getIData())
        return Result();
    return change([&](PageModelCore &c) { return c.addData(page); });
}

void CHpfPageDataModel::removeDataByKey(quint64 key)
{
    change([&](PageModelCore &c) {
        const quint32 slot = c.rows.findHash(key);
        if (slot != PageRows::noSlot)
            c.removeData(slot);
    });
}

void CHpfPageDataModel::removeDataByKey(const std::string &key)
{
    change([&](PageModelCore &c) {
        const quint32 slot = c.rows.find(key, kdservice::hashOfKey(key));
        if (slot != PageRows::noSlot)
            c.removeData(slot);
    });
}

void CHpfPageDataModel::clear()
{
    change([](PageModelCore &c) { c.clear(); });
}

bool CHpfPageDataModel::totalCountChange()
{
    return countChanged.exchange(false);
}

void CHpfPageDataModel::setPageCount(int rows)
{
    change([&](PageModelCore &c) { c.pageCount = rows; });
}

void CHpfPageDataModel::setStartIndex(int index)
{
    change([&](PageModelCore &c) { c.startIndex = index; });
}

int CHpfPageDataModel::pageCount() const
{
    return shownRead([](const PageModelCore &c) { return c.pageCount; });
}

int CHpfPageDataModel::startIndex() const
{
    return shownRead([](const PageModelCore &c) { return c.startIndex; });
}

bool CHpfPageDataModel::isIndexAtShowRegion(int index) const
{
    return shownRead([&](const PageModelCore &c) { return c.isIndexAtShowRegion(index); });
}

} // namespace KV
