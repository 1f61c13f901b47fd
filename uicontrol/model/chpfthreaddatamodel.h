#pragma once

#include <boost/asio/io_service.hpp>
#include <boost/asio/strand.hpp>
#include <vector>

#include "kdservice/idata.h"
#include "model/chpfdatamodel.h"
#include "model/cloadcount.h"

namespace KV {

/// A model whose bulk loads run on the host's strand "uicontrol_hpf_data_model": rows are made there and handed to the
/// base in one call per batch, in the order in which the batches came.
///
/// Threading: addDatas() from any thread. A batch holds the model only while it runs, and is skipped when the model is
/// gone by then; the last hold is given up on the GUI thread. Progress and cancelling: from any thread, at any time.
/// Errors: loading into a model that no boost::shared_ptr owns ends with boost::bad_weak_ptr.
class UICONTROL_API CHpfThreadDataModel : public CHpfDataModel
{
public:
    using RecordPtr = boost::shared_ptr<kdservice::IData>;
    using Records = std::vector<RecordPtr>;
    /// Records with the colour key of their whole row; an empty key is the default colour.
    using ColoredRecords = QList<QPair<RecordPtr, QString>>;
    using Filters = QMap<int, QPair<ZB::EFilterType, QSet<QString>>>;

    CHpfThreadDataModel(int metaId, kdservice::EVxTraderType traderType);
    ~CHpfThreadDataModel() override;

    void addDatas(const Records &records);
    /// Takes the list over: with a million records that saves the calling thread some 20 ms.
    void addDatas(Records &&records);
    /// filters: by column, set after the rows are in.
    void addDatas(const ColoredRecords &records, const Filters &filters);

    /// How far the present load is, in thousandths of the work on all rows that were handed over since the model last
    /// had nothing to load; 1000 when there is nothing to load: then all batches are in whole, with their filters.
    int loadProgress() const;
    /// Of the present load; another number is another load, which began after the one before had ended or was
    /// cancelled.
    quint64 loadNumber() const;
    /// Ends the present load; false when there is none. Rows that are in stay in, and the filters of a batch of which
    /// rows are in are set. The rest of that batch and all batches behind it that were handed over before this call are
    /// dropped; what is handed over later is loaded whole. Waits for nothing: loadProgress() is 1000 at once, while a
    /// few hundred rows that are on their way may still come in, and the dropped records are let go when it is their
    /// turn.
    bool cancelLoad();
    /// cancelLoad() and clear() for whoever is done with the model, as a table is that goes: rows that are on their way
    /// are taken out again, so that none is left to hold the model. Batches that are handed over later are loaded.
    void dismiss();

    /// Adds or replaces the row of a key at once, on the caller's thread, as a row of a table sorted by time.
    void updateDataFixColorForSortTime(const QString &key, const RecordPtr &record, const QString &colorKey);

protected:
    /// On the strand.
    void doAddDatas(const Records &records);
    void doAddDatas(const ColoredRecords &records, const Filters &filters);

private:
    template <typename Task>
    void post(qint64 rows, Task task);
    template <typename MakeRow>
    bool load(int count, MakeRow makeRow);
    void store(const QVector<Row> &rows);
    void takeOut(const QVector<Row> &rows, int first, int end);

    boost::shared_ptr<boost::asio::io_service::strand> strand;
    CLoadCount loads;
    CLoadCount::Ticket present = CLoadCount::uncounted; ///< of the batch that runs; on the strand only
};

} // namespace KV
