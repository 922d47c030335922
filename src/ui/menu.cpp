#include "ui/menu.h"

bool isSelectable(const MenuItem& item) {
  return item.kind == MenuItem::Kind::item && item.enabled;
}

// Without a default: who adds an action is asked which of the two it is.
bool isCommand(const MenuItem& item) {
  switch (item.action) {
    case Action::refreshNow:
    case Action::openAM:
    case Action::about:
    case Action::quitApp:
      return true;
    case Action::none:
    case Action::quitProcess:
    case Action::forceProcess:
    case Action::showDetails:
    case Action::quitFamily:
    case Action::forceFamily:
    case Action::openDockerHelp:
    case Action::unloadByLabel:
    case Action::unloadLaunchAgent:
    case Action::loadLaunchAgent:
    case Action::openRow:
    case Action::showMore:
    case Action::openMenu:
      return false;
  }
  return false;
}

bool isHeading(const MenuItem& item) {
  return !item.enabled && item.title.starts_with("— ");
}

const VordaProcess* processOf(const MenuItem& row) {
  if (!row.process) return nullptr;
  for (const MenuItem& item : row.submenu) {
    const auto* process = recordIn<VordaProcess>(item.representedObject);
    if (process != nullptr && process->pid == row.process->pid) return process;
  }
  return nullptr;
}

std::shared_ptr<const MemoryPressureView> stripOf(const Menu& menu) {
  for (const MenuItem& item : menu.items) {
    if (item.strip) return item.strip;
  }
  return nullptr;
}
