#include "popups/distincttexts.h"

namespace ZB {

DistinctTexts::DistinctTexts() = default;

DistinctTexts::~DistinctTexts() = default;

} // namespace ZB
