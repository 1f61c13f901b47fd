#pragma once

#include "frameworkexport.h"
#include "zb/efiltertype.h"

namespace ZB {

/// Conditions that let the same texts pass, in a form of their own for each: where one of them is exact, or where
/// nothing can pass, a single exact one; otherwise every different contained text's once, then one for all texts that
/// are left out. A condition that is alone comes back at no cost.
FRAMEWORK_API FilterConditions plainConditions(const FilterConditions &conditions);

/// The first condition as IBaseTable::onFilterTrigger() takes it: without texts to take the filter off, and for an
/// exact condition without texts another one that nothing passes either.
FRAMEWORK_API FilterCondition filterToTake(const FilterConditions &conditions);

} // namespace ZB
