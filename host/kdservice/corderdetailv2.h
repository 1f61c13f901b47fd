#pragma once

#include "kdservice/idata.h"

namespace kdservice {

/// An order, as the library's rules need it besides its fields. Record types 16202 and 16204.
class HOST_API COrderDetailV2 : public IData
{
public:
    COrderDetailV2();
    ~COrderDetailV2() override;

    /// Status code as a character code: 48..52 and 55 open, 53, 54, 57 filled wholly or ended by a fill, 56 and 86
    /// cancelled or rejected.
    virtual int orderStatus() const = 0;
    /// The instrument's code, UTF-8.
    virtual std::string codeText() const = 0;
    /// The host's sequence of entry, which breaks ties of a sort; the largest value means none.
    virtual int entrySequence() const = 0;
};

} // namespace kdservice
