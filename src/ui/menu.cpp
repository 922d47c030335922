#include "ui/menu.h"

std::shared_ptr<const MemoryPressureView> stripOf(const Menu& menu) {
  for (const MenuItem& item : menu.items) {
    if (item.strip) return item.strip;
  }
  return nullptr;
}
