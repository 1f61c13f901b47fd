#include "records/plainrecord.h"

namespace refhost {

PlainRecord::~PlainRecord() = default;

} // namespace refhost
