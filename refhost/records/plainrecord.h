#pragma once

#include "records/recordof.h"

namespace refhost {

/// A record that is neither order nor deal: a position, an account, an instrument. Made by makeRecord() and copyOf()
/// only.
class REFHOST_API PlainRecord final : public RecordOf<kdservice::IData>
{
public:
    using RecordOf::RecordOf;
    ~PlainRecord() override;
};

} // namespace refhost
