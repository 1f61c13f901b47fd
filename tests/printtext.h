#pragma once

#include <QtCore/QString>
#include <ostream>

QT_BEGIN_NAMESPACE
/// Failures show texts, not their bytes.
inline void PrintTo(const QString &text, std::ostream *out)
{
    *out << '"' << text.toStdString() << '"';
}
QT_END_NAMESPACE
