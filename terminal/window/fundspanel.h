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

class ColumnsButton;

/// Money of any number of accounts at the last prices.
class FundsPanel : public RecordPanel
{
    Q_OBJECT

public:
    /// tableId: under which the user's settings of the table are kept.
    /// hasFutures: with the columns that accounts of stocks have no use for.
    explicit FundsPanel(int tableId, QWidget *parent = nullptr, bool hasFutures = false);
    ~FundsPanel() override;

    /// Shows the accounts that have changed as they stand now, with the next frame.
    void take(const trading::AccountSource &source, const trading::AccountChanges &changes);
    /// Stands behind the number of accounts in the title.
    void setRemark(const QString &text);

    void themeChanged() override;

protected:
    QString remark() const override;

private:
    void show(const trading::AccountBook &book);

    std::map<std::string, boost::shared_ptr<refhost::PlainRecord>> records;
    QString titleRemark;
    ColumnsButton *columns = nullptr;
};

} // namespace terminal
