#pragma once

#include <boost/asio/io_service.hpp>
#include <boost/asio/strand.hpp>
#include <boost/shared_ptr.hpp>
#include <string>

#include "hostexport.h"

namespace net {

/// The host's network engine, as far as the library needs it: work queues by name. Tasks of one strand run one after
/// the other, in the order in which they were posted, off the GUI thread. Any thread may post.
class HOST_API RPCEngine
{
public:
    static RPCEngine *instance();

    /// The strand of a name, made on first use and kept for the life of the engine; the same object for the same name.
    boost::shared_ptr<boost::asio::io_service::strand> getStrand(const std::string &name);

    RPCEngine(const RPCEngine &) = delete;
    RPCEngine &operator=(const RPCEngine &) = delete;

private:
    RPCEngine();
    ~RPCEngine();
};

} // namespace net
