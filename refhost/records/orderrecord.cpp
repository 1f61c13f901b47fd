#include "records/orderrecord.h"

namespace refhost {

OrderRecord::~OrderRecord() = default;

int OrderRecord::orderStatus() const
{
    return block.getInt(block.type().def().statusField);
}

std::string OrderRecord::codeText() const
{
    return block.getString(block.type().def().codeField);
}

int OrderRecord::entrySequence() const
{
    return block.getInt(block.type().def().sequenceField);
}

} // namespace refhost
