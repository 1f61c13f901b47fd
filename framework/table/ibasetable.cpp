#include "zb/ibasetable.h"

namespace ZB {

IBaseTable::IBaseTable() = default;

IBaseTable::~IBaseTable() = default;

} // namespace ZB
