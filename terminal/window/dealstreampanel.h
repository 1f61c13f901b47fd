#pragma once

#include <boost/shared_ptr.hpp>

#include "window/tablepanel.h"

namespace KV {
class CHpfThreadDataModel;
}

namespace terminal {

/// Every deal of the market: the newest at the end. Rows are made and put in off the GUI thread.
class DealStreamPanel : public TablePanel
{
    Q_OBJECT

public:
    explicit DealStreamPanel(QWidget *parent = nullptr);
    ~DealStreamPanel() override;

    void take(const FeedPump::Records &records) override;
    bool isSettled() const override;

private:
    const boost::shared_ptr<KV::CHpfThreadDataModel> deals;
};

} // namespace terminal
