#pragma once

#include <string>

#include "hostconformance.h"

/// A line for each finding.
inline std::string lines(const conformance::Findings &findings)
{
    std::string text;
    for (const conformance::Finding &finding : findings)
        text += finding.subject.toStdString() + ": " + finding.what.toStdString() + "\n";
    return text;
}
