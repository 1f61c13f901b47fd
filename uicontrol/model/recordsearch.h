#pragma once

#include <boost/shared_ptr.hpp>

#include "kdservice/idata.h"

namespace KV {

/// Nested records deeper than this are not looked into: a record that contains itself must not end the program.
constexpr int deepestNesting = 8;

/// The record that holds a field: the record itself, or the first of its nested records, depth-first in ascending order
/// of their field ids. Null when none of them has it. `keep` holds the nested record that was found; the answer is
/// valid while it and `record` are. Any thread.
const kdservice::IData *recordHolding(const kdservice::IData &record, int fieldId,
                                      boost::shared_ptr<kdservice::IData> &keep);

} // namespace KV
