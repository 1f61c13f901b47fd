#include "modelstrand.h"

#include <memory>

#include "net/rpcengine.h"
#include "testrecords.h"

namespace testrecords {

boost::shared_ptr<boost::asio::io_service::strand> modelStrand()
{
    return net::RPCEngine::instance()->getStrand("uicontrol_hpf_data_model");
}

void finishStrand()
{
    const auto done = std::make_shared<std::promise<void>>();
    modelStrand()->post([done] { done->set_value(); });
    done->get_future().wait();
}

HeldStrand::HeldStrand()
{
    modelStrand()->post([gate = release.get_future().share()] { gate.wait(); });
}

KV::CHpfThreadDataModel::Records tickets(int first, int count)
{
    KV::CHpfThreadDataModel::Records records;
    for (int number = first; number < first + count; ++number)
        records.push_back(fullTicket("T" + std::to_string(number), number));
    return records;
}

HaltingModel::~HaltingModel() = default;

void HaltingModel::haltAt(const std::string &key)
{
    haltKey = key;
    halted = {};
    release = {};
}

void HaltingModel::_addData(const Row &row)
{
    if (haltKey.empty() || row->key() != haltKey)
        return;
    haltKey.clear();
    halted.set_value();
    release.get_future().wait();
}

} // namespace testrecords
