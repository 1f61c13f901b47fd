// Any sequence of changes, sorts and filters leaves a table's model with the rows, the order and the sums of the
// plainest model that there is.

#include <QtCore/QCoreApplication>

#include "framework/modeltwins.h"
#include "fuzzinput.h"

namespace {

constexpr int mostSteps = 300;
constexpr int stepsPerLook = 8;
constexpr int keyCount = 40;

void requireNoDifference(const modeltest::ModelTwins &twins)
{
    const QString difference = twins.difference();
    fuzz::require(difference.isEmpty(), difference.toStdString());
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    static QCoreApplication application(*argc, *argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    fuzz::Input input(bytes, size);
    modeltest::ModelTwins twins([&input](int limit) { return input.below(limit); }, keyCount);
    for (int step = 0; step < mostSteps && !input.isEmpty(); ++step) {
        twins.changeSomething();
        if (step % stepsPerLook == 0)
            requireNoDifference(twins);
    }
    requireNoDifference(twins);
    return 0;
}
