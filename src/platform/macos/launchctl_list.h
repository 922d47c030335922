#pragma once

#include <string_view>

#include "platform/launch_agents.h"

namespace platform {

/// The loaded launch agents by what `launchctl list` prints: a header, then a line each with pid,
/// status and label between tabs. Of two lines with one label the later counts; lines with fewer
/// than three fields are passed over. A pid that is no number is none. Bytes that are not UTF-8 as
/// a whole tell nothing.
LoadedLaunchAgents parseLaunchctlList(std::string_view output);

}  // namespace platform
