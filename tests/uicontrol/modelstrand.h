#pragma once

#include <boost/asio/io_service.hpp>
#include <boost/asio/strand.hpp>
#include <boost/shared_ptr.hpp>
#include <future>

#include "model/chpfthreaddatamodel.h"

/// The strand of bulk loads, held and awaited, and batches for it.
namespace testrecords {

boost::shared_ptr<boost::asio::io_service::strand> modelStrand();
/// Waits until everything that was posted so far has run.
void finishStrand();

/// Keeps the strand busy from now on until it is told to go on.
class HeldStrand
{
public:
    HeldStrand();
    void go() { release.set_value(); }

private:
    std::promise<void> release;
};

/// Full tickets with the keys "T" and the numbers from `first` on.
KV::CHpfThreadDataModel::Records tickets(int first, int count);

/// Stands still in the middle of a batch, right after the piece with the first row of a key has been stored.
class HaltingModel : public KV::CHpfThreadDataModel
{
public:
    using CHpfThreadDataModel::CHpfThreadDataModel;
    ~HaltingModel() override;

    void haltAt(const std::string &key);
    void waitUntilHalted() { halted.get_future().wait(); }
    void goOn() { release.set_value(); }

protected:
    void _addData(const Row &row) override;

private:
    std::string haltKey;
    std::promise<void> halted;
    std::promise<void> release;
};

} // namespace testrecords
