#pragma once

#include "hostconformance.h"

namespace conformance {

/// Every resource key in the sources of the controls and the framework; null at the end.
extern const char *const resourceKeys[];

/// Gathers findings; each expectation names its subject.
class Report
{
public:
    void expect(bool kept, const QString &subject, const QString &what)
    {
        if (!kept)
            found.push_back({subject, what});
    }
    void expectText(const QString &subject, const QString &got, const QString &wanted)
    {
        expect(got == wanted, subject, QStringLiteral("\"%1\" instead of \"%2\"").arg(got, wanted));
    }
    Findings take() { return std::move(found); }

private:
    Findings found;
};

} // namespace conformance
