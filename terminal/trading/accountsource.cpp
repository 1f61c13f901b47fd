#include "trading/accountsource.h"

namespace trading {

AccountSource::~AccountSource() = default;

} // namespace trading
