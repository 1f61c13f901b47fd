#pragma once

namespace refhost {
enum class RiseFall;
}

namespace terminal {

struct Options;

/// What the user chooses of the look, kept in the user's configuration. Each change shows at once, everywhere. GUI
/// thread.
namespace viewsettings {

/// Takes over what the configuration holds and, before that, what the command line asks for.
void load(const Options &options);

bool isDark();
void setDark(bool dark);
void setRiseFall(refhost::RiseFall riseFall);
/// In per cent; cut off at 100 and 300.
int scalePercent();
void setScalePercent(int percent);

} // namespace viewsettings

} // namespace terminal
