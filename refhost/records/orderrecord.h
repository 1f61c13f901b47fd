#pragma once

#include "kdservice/corderdetailv2.h"
#include "records/recordof.h"

namespace refhost {

/// An order. Made by makeRecord(), makeOrder() and copyOf() only.
class REFHOST_API OrderRecord final : public RecordOf<kdservice::COrderDetailV2>
{
public:
    using RecordOf::RecordOf;
    ~OrderRecord() override;

    int orderStatus() const override;
    std::string codeText() const override;
    int entrySequence() const override;
};

} // namespace refhost
