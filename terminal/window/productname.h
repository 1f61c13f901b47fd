#pragma once

namespace terminal {

/// Tells the host what the product is called and where its user agreement lies.
void nameProduct();

} // namespace terminal
