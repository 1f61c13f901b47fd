#include "hostconformance.h"

namespace conformance {

Findings checkHost(const HostSample &sample)
{
    Findings all;
    for (Findings &part : std::vector<Findings>{checkServices(), checkEvents(), checkResources(sample.extraKeys),
                                                checkTexts(), checkRecords(sample)})
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

} // namespace conformance
