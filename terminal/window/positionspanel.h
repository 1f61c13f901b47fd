#pragma once

#include <boost/shared_ptr.hpp>
#include <map>
#include <string>

#include "trading/accountsource.h"
#include "window/recordpanel.h"

namespace refhost {
class PlainRecord;
}

namespace terminal {

/// Positions of any number of accounts: cost, market value, floating profit.
class PositionsPanel : public RecordPanel
{
    Q_OBJECT

public:
    /// tableId: under which the user's settings of the table are kept.
    /// hasFutures: with the columns that stocks have no use for, such as the side.
    explicit PositionsPanel(int tableId, QWidget *parent = nullptr, bool hasFutures = false);
    ~PositionsPanel() override;

    /// Whether what was bought on the day counts as available also where the exchange lets it be sold on the next only.
    void setSellsOnSameDay(bool sells) { sellsOnSameDay = sells; }
    /// Shows the positions that have changed as they stand now, with the next frame; those that are gone leave.
    void take(const trading::AccountSource &source, const trading::AccountChanges &changes);

protected:
    /// The table keeps a position that was closed behind a filter.
    int recordCount() const override;

private:
    using RecordPtr = boost::shared_ptr<refhost::PlainRecord>;

    void show(const trading::AccountBook &book, const trading::AccountBook::PositionKey &key);
    RecordPtr recordOf(const std::string &recordKey, const std::string &code);
    void remove(const std::string &recordKey);
    void fill(refhost::PlainRecord &record, const trading::AccountBook &book, const trading::Position &position) const;

    std::map<std::string, RecordPtr> records;
    bool sellsOnSameDay = false;
};

} // namespace terminal
