#pragma once

#include "kdservice/idata.h"

namespace kdservice {

/// A deal, as the library's rules need it besides its fields. Record types 16203 and 16207.
class HOST_API CDealDetailV2 : public IData
{
public:
    CDealDetailV2();
    ~CDealDetailV2() override;

    /// The instrument's code, UTF-8.
    virtual std::string codeText() const = 0;
    /// The host's sequence of entry, which breaks ties of a sort; the largest value means none.
    virtual int entrySequence() const = 0;
};

} // namespace kdservice
