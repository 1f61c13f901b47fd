#pragma once

#include <QtCore/QString>
#include <functional>

#include "frameworkexport.h"

namespace ZB {

/// Takes a piece of what is unpacked; false stops the reading.
using ZipSink = std::function<bool(const char *bytes, int size)>;

/// Unpacks one entry of a zip archive into the sink, piece by piece. False when there is no such archive or entry, when
/// it is damaged (its check sum is compared) or cut short, or when the sink stopped. Any thread.
FRAMEWORK_API bool readZipEntry(const QString &archivePath, const QString &entryName, const ZipSink &sink);

} // namespace ZB
