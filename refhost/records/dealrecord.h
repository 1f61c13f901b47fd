#pragma once

#include "kdservice/cdealdetailv2.h"
#include "records/recordof.h"

namespace refhost {

/// A deal. Made by makeRecord(), makeDeal() and copyOf() only.
class REFHOST_API DealRecord final : public RecordOf<kdservice::CDealDetailV2>
{
public:
    using RecordOf::RecordOf;
    ~DealRecord() override;

    std::string codeText() const override;
    int entrySequence() const override;
};

} // namespace refhost
