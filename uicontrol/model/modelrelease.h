#pragma once

#include <boost/shared_ptr.hpp>

namespace KV {

class CHpfDataModel;

/// Gives up one hold on a model. On another thread than the GUI's, a hold that might be the last one is kept until the
/// GUI thread gets round to it: rows die on whichever thread drops them, but models belong to the GUI thread. Without
/// a Qt application the model goes at once. Any thread; about 20 ns off the GUI thread.
void releaseModel(boost::shared_ptr<CHpfDataModel> &&model);

} // namespace KV
