// What a paged model answers about its records and their places.

#include "pagemodel/chpfpagedatamodel_p.h"

namespace KV {

int CHpfPageDataModel::size() const
{
    return read([](const PageModelCore &c) { return c.visible.size(); });
}

int CHpfPageDataModel::originalSize() const
{
    return shownRead([](const PageModelCore &c) { return c.all.size(); });
}

QList<CHpfPageDataModel::Page> CHpfPageDataModel::pagesOf(const std::vector<quint32> &slotList) const
{
    QList<Page> pages;
    pages.reserve(static_cast<int>(slotList.size()));
    for (const quint32 slot : slotList)
        pages.append(core->rows[slot].page);
    return pages;
}

QList<CHpfPageDataModel::Page> CHpfPageDataModel::getShowDatas() const
{
    return read([&](const PageModelCore &c) { return pagesOf(c.visible.slotsInOrder()); });
}

QList<CHpfPageDataModel::Page> CHpfPageDataModel::getAllDatas() const
{
    return read([&](const PageModelCore &c) { return pagesOf(c.all.slotsInOrder()); });
}

QList<CHpfPageDataModel::Page> CHpfPageDataModel::getPageDatas() const
{
    return read([&](const PageModelCore &c) { return pagesOf(c.pageSlots()); });
}

QList<CHpfPageDataModel::Page> CHpfPageDataModel::getShownPage() const
{
    return shownRead([&](const PageModelCore &c) { return pagesOf(c.pageSlots()); });
}

int CHpfPageDataModel::shownSize() const
{
    return shownRead([](const PageModelCore &c) { return c.visible.size(); });
}

quint64 CHpfPageDataModel::shownRevision() const
{
    return shownRead([](const PageModelCore &c) { return c.revision; });
}

CHpfPageDataModel::Page CHpfPageDataModel::getData(int index) const
{
    return read([&](const PageModelCore &c) {
        return index >= 0 && index < c.visible.size() ? c.rows[c.visible.at(index)].page : Page();
    });
}

CHpfPageDataModel::Page CHpfPageDataModel::getDataFromAll(int index) const
{
    return read([&](const PageModelCore &c) {
        return index >= 0 && index < c.all.size() ? c.rows[c.all.at(index)].page : Page();
    });
}

CHpfPageDataModel::Page CHpfPageDataModel::getDataByKey(quint64 key) const
{
    return shownRead([&](const PageModelCore &c) {
        const quint32 slot = c.rows.findHash(key);
        return slot == PageRows::noSlot ? Page() : c.rows[slot].page;
    });
}

bool CHpfPageDataModel::containData(quint64 key) const
{
    return shownRead([&](const PageModelCore &c) { return c.rows.findHash(key) != PageRows::noSlot; });
}

std::string CHpfPageDataModel::getDataKeyByIndex(int index) const
{
    return read([&](const PageModelCore &c) {
        return index >= 0 && index < c.visible.size() ? c.rows.key(c.visible.at(index)) : std::string();
    });
}

int CHpfPageDataModel::getDataIndex(const Page &page) const
{
    return read([&](const PageModelCore &c) { return c.indexIn(c.visible, page); });
}

int CHpfPageDataModel::getAllDataIndex(const Page &page) const
{
    return read([&](const PageModelCore &c) { return c.indexIn(c.all, page); });
}

int CHpfPageDataModel::getDataIndexByKey(quint64 key) const
{
    return read([&](const PageModelCore &c) {
        const quint32 slot = c.rows.findHash(key);
        return slot == PageRows::noSlot ? -1 : c.visible.indexOf(slot);
    });
}

int CHpfPageDataModel::getDataInsertIndex(const Page &page)
{
    int index = -1;
    settledChange([&](PageModelCore &c) { index = c.insertIndexIn(c.visible, page); });
    return index;
}

int CHpfPageDataModel::getAllDataInsertIndex(const Page &page)
{
    int index = -1;
    settledChange([&](PageModelCore &c) { index = c.insertIndexIn(c.all, page); });
    return index;
}

bool CHpfPageDataModel::checkConsistency() const
{
    return read([](const PageModelCore &c) { return c.checkConsistency(); });
}

} // namespace KV
