#pragma once

#include "refhostexport.h"

namespace refhost {

/// Ends the threads behind net::RPCEngine: what has been posted is done first, what is posted later waits until
/// somebody asks for a strand again. Called by itself when the application object goes. Not from a strand.
REFHOST_API void finishStrands();

} // namespace refhost
