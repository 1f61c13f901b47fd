#pragma once

#include "kv/productinfo.h"
#include "refhostexport.h"

namespace refhost {

/// What the build system knows: version, build, and the libraries that this host brings into a product, with the name
/// of the library of controls.
REFHOST_API KV::ProductInfo builtProductInfo();

/// Makes this what KV::getProductInfo() answers, which is builtProductInfo() before. GUI thread.
REFHOST_API void setProductInfo(const KV::ProductInfo &info);

} // namespace refhost
