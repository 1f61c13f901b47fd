#pragma once

#include "model/chpfdatamodel.h"
#include "trading/historyquery.h"

namespace terminal {

/// The rows of one page of a desk's past, with sums over all that was found. GUI thread. Held by boost::shared_ptr, as
/// every CHpfDataModel.
class HistoryRows : public KV::CHpfDataModel
{
public:
    explicit HistoryRows(int metaId);
    ~HistoryRows() override;

    /// Of a page without sums none are shown.
    void takeSums(const trading::HistoryPage &page);
    QString getStatDispalyQString(int column) const override;

private:
    bool hasSums = false;
    trading::HistorySums sums;
};

} // namespace terminal
