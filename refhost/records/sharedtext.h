#pragma once

#include <string>

namespace refhost {

/// The one stored copy of a text that many records have in common (codes, names, accounts); equal texts give equal
/// pointers. Kept for the life of the process, so for sets of texts that stay small. Any thread; takes a lock.
const std::string *sharedText(const std::string &text);

} // namespace refhost
