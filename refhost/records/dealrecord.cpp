#include "records/dealrecord.h"

namespace refhost {

DealRecord::~DealRecord() = default;

std::string DealRecord::codeText() const
{
    return block.getString(block.type().def().codeField);
}

int DealRecord::entrySequence() const
{
    return block.getInt(block.type().def().sequenceField);
}

} // namespace refhost
