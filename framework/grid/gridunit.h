#pragma once

#include <QtCore/QString>

#include "frameworkexport.h"

namespace ZB {

/// Takes a percent sign or a Chinese unit (ten thousands, hundred millions) off the end of a number's text and returns
/// it, so that it can be drawn in a slot of its own; empty, and the text untouched, when there is none.
FRAMEWORK_API QString takeUnit(QString &text);

} // namespace ZB
