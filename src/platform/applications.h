#pragma once

namespace platform {

/// Opens the system's own process monitor. Without one nothing happens.
void openSystemMonitor();

/// Opens Docker Desktop when it is installed.
void openDockerDesktop();

}  // namespace platform
