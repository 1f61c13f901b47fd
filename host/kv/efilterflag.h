#pragma once

namespace KV {

/// Kinds of instruments, as bits: which of them a code field offers, and which one an instrument is.
enum EFilterFlag : int
{
    FilterNone = 0,
    FilterStock = 1,
    FilterFund = 2,
    FilterBond = 4,
    FilterIndex = 8,
    FilterFuture = 16,
    FilterOption = 32,
    FilterAll = 63
};

} // namespace KV
