#include "platform/applications.h"

#include <cstdlib>
#include <utility>

#include "platform/linux/detached_program.h"
#include "platform/linux/installed_applications.h"
#include "platform/linux/system_monitor.h"

namespace platform {
namespace {

/// The command that runs `command` in a terminal window; empty where no program for that is
/// known.
std::vector<std::string> inTerminal(const std::vector<std::string>& command) {
  std::vector<std::string> result;
  if (!findProgram("xdg-terminal-exec").empty()) {
    result = {"xdg-terminal-exec"};
  } else if (!findProgram("x-terminal-emulator").empty()) {
    result = {"x-terminal-emulator", "-e"};
  } else {
    return result;
  }
  result.insert(result.end(), command.begin(), command.end());
  return result;
}

bool start(const InstalledApplication& application) {
  const DesktopEntry& entry = application.entry;
  if (!entry.tryExec.empty() && findProgram(entry.tryExec).empty()) return false;
  auto command = commandOf(entry, application.path.native());
  if (!command || findProgram(command->front()).empty()) return false;
  if (entry.needsTerminal) *command = inTerminal(*command);
  return !command->empty() && startDetached(std::move(*command), entry.folder) == 0;
}

}  // namespace

void openSystemMonitor() {
  const char* desktop = std::getenv("XDG_CURRENT_DESKTOP");
  const auto monitors = systemMonitors(installedApplications(applicationFolders()),
                                       desktopNames(desktop == nullptr ? "" : desktop));
  for (const auto& monitor : monitors) {
    if (start(monitor)) return;
  }
}

void openDockerDesktop() {
  for (const auto& application : installedApplications(applicationFolders())) {
    if (application.id == "docker-desktop.desktop") start(application);
  }
}

}  // namespace platform
