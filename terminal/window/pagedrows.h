#pragma once

#include <QtCore/QList>
#include <QtCore/QMap>
#include <QtCore/QVector>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

#include "model/chpfdatamodel.h"

namespace kdservice {
class IData;
}

namespace KV {
class CHpfPageData;
class CHpfPageDataModel;
struct CUpdatePageDataResult;
} // namespace KV

namespace terminal {

/// The rows of one page: what a table shows of a paged model, in its order, with sums over the whole visible list.
///
/// Records go into the paged model, and what each of them does to the page is done to the rows. Where a result cannot
/// tell (a removal in front of the page), and with each step of the timer, the page is read anew; only rows that are
/// others then are touched, so selections survive.
///
/// GUI thread. Held by boost::shared_ptr, as every CHpfDataModel. Cost: a record that is not on the page costs what the
/// paged model takes; a batch that changes the page some microseconds more for each row of the page.
class PagedRows : public KV::CHpfDataModel
{
public:
    using Pages = boost::shared_ptr<KV::CHpfPageDataModel>;
    using Record = boost::shared_ptr<kdservice::IData>;

    /// Makes the paged model, with the columns and sums that the type has; new records go to its end.
    PagedRows(int metaId, kdservice::EVxTraderType traderType);
    ~PagedRows() override;

    const Pages &pages() const { return pageModel; }
    /// New and changed records; empty pointers are skipped.
    void take(const QVector<Record> &records);
    /// Times that the page was read anew for want of a result that tells.
    int refills() const { return refillCount; }

    /// Reads the page: after a page change, a sort, a filter. Never waits for the paged model's work.
    void onTimer() override;
    int customSort(const Row &a, const Row &b) const override;
    /// The sums are the paged model's, over every page; the last ones while it sorts or filters.
    QString getStatDispalyQString(int column) const override;

private:
    /// A row of the page. Places only tell rows apart, they do not count them.
    struct Shown
    {
        const kdservice::IData *record = nullptr;
        qint64 place = 0;
        bool fresh = true; ///< to be handed in, and placed where its neighbours say
    };
    class PlacedRow;
    using PageList = QList<boost::shared_ptr<KV::CHpfPageData>>;

    void apply(const KV::CUpdatePageDataResult &result);
    void settlePage();
    void readPage(const PageList &page);
    bool isWhole(const PageList &page) const;
    void removeGone();
    void handIn(const PageList &page);
    static void place(const std::vector<Shown *> &rows);
    QString sumText(int column) const;
    static bool placeRun(const std::vector<Shown *> &rows, size_t first, size_t last);

    Pages pageModel;
    std::unordered_map<std::string, Shown> shown; ///< by key
    std::set<std::string> gone;                   ///< keys to be taken off the rows
    bool touched = false;                         ///< rows to be removed, or fresh ones
    bool sumsTouched = false;
    int summedSize = 0; ///< of the visible list at the last step of the timer
    int refillCount = 0;
    quint64 readRevision = 0;            ///< of the paged model's lists, when the page was read
    mutable QMap<int, QString> lastSums; ///< as they were shown before work on the whole list
};

} // namespace terminal
