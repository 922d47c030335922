#include "ui/menu.h"

bool isSelectable(const MenuItem& item) {
  return item.kind == MenuItem::Kind::item && item.enabled;
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
