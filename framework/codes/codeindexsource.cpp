#include "codes/codeindexsource.h"

#include <boost/asio/post.hpp>
#include <functional>

#include "codes/charreadings.h"
#include "net/rpcengine.h"
#include "table/modelwakeup.h"

namespace ZB {

/// What the strand and the GUI thread share.
struct CodeIndexSource::Shared
{
    CharReadings readings; ///< the strand's own

    std::mutex mutex; ///< guards everything below
    std::shared_ptr<const CodeIndex> built;
};

CodeIndexSource *CodeIndexSource::instance()
{
    static CodeIndexSource *made = new CodeIndexSource; // never destroyed: a build may end after everything else
    return made;
}

CodeIndexSource::CodeIndexSource() : wakeUp(std::make_unique<ModelWakeUp>()), shared(std::make_shared<Shared>())
{
    connect(wakeUp.get(), &ModelWakeUp::woken, this, &CodeIndexSource::slotBuilt);
}

CodeIndexSource::~CodeIndexSource() = default;

std::shared_ptr<const CodeIndex> CodeIndexSource::index() const
{
    return present;
}

void CodeIndexSource::refresh()
{
    const quint64 version = KV::getInstrumentListVersion();
    if (isBuilding || (hasAsked && version == askedVersion))
        return;
    isBuilding = true;
    hasAsked = true;
    askedVersion = version;
    const auto strand = net::RPCEngine::instance()->getStrand("uicontrol_code_index");
    boost::asio::post(*strand, [state = shared, wake = wakeUp->listener()] {
        auto made = std::make_shared<const CodeIndex>(KV::getInstrumentList(), state->readings);
        {
            const std::lock_guard<std::mutex> lock(state->mutex);
            state->built = std::move(made);
        }
        wake();
    });
}

void CodeIndexSource::slotBuilt()
{
    {
        const std::lock_guard<std::mutex> lock(shared->mutex);
        present = shared->built;
    }
    isBuilding = false;
    Q_EMIT sigIndexChanged();
    refresh();
}

} // namespace ZB
