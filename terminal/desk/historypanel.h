#pragma once

#include "trading/historyquery.h"
#include "window/tablepanel.h"

namespace terminal {

class HistoryTable;

/// The orders or the deals of all days of the desk file, page by page, the newest first. Looks for new ones each time
/// that it is brought to the front.
class HistoryPanel : public TablePanel
{
    Q_OBJECT

public:
    explicit HistoryPanel(trading::HistoryQuery::Kind kind, QWidget *parent = nullptr);
    ~HistoryPanel() override;

    HistoryTable &history() const { return *historyTable; }
    /// To be called once. Without a file the panel stays empty and says why.
    void open(const QString &path);
    void refresh() override;

protected:
    void showEvent(QShowEvent *event) override;

private:
    HistoryTable *historyTable;
};

} // namespace terminal
