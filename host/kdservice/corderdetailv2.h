#pragma once

#include "kdservice/idata.h"

namespace kdservice {

/// An order, as the library's rules need it besides its fields. Record types 16202 and 16204.
class HOST_API COrderDetailV2 : public IData
{
public:
    COrderDetailV2();
    ~COrderDetailV2() override;

    /// Status code as a character code: 48 to 52 and 55 open, 56 and 86 filled or confirmed, 53, 54 and 57 ended
    /// without a full fill (cancelled in part, cancelled, rejected). The largest value means none.
    virtual int orderStatus() const = 0;
    /// The instrument's code, UTF-8.
    virtual std::string codeText() const = 0;
    /// The host's sequence of entry, which breaks ties of a sort; the largest value means none.
    virtual int entrySequence() const = 0;
};

} // namespace kdservice
