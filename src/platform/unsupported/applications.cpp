#include "platform/applications.h"

namespace platform {

void openSystemMonitor() {}

void openDockerDesktop() {}

}  // namespace platform
