#pragma once

#include <QtWidgets/QWidget>
#include <boost/shared_ptr.hpp>
#include <vector>

#include "kdservice/idata.h"

/// What a reader of the README has at hand.
namespace readme {

using Record = boost::shared_ptr<kdservice::IData>;
using Records = std::vector<Record>;

} // namespace readme
