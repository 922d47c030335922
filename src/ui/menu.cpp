#include "ui/menu.h"

bool isHeading(const MenuItem& item) {
  return !item.enabled && item.title.starts_with("— ");
}

std::shared_ptr<const MemoryPressureView> stripOf(const Menu& menu) {
  for (const MenuItem& item : menu.items) {
    if (item.strip) return item.strip;
  }
  return nullptr;
}
