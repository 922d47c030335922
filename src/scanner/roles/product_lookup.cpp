#include "scanner/roles/product_lookup.h"

#include <utility>
#include <vector>

#include "scanner/command_line/program_names.h"
#include "scanner/roles/product_table.h"

namespace recognition {

Products::Products(std::span<const Product> rows) {
  std::vector<decltype(byName_)::Entry> names;
  for (const Product& product : rows) {
    for (const std::string_view name : listed(product.names)) names.emplace_back(name, &product);
  }
  byName_ = decltype(byName_)(std::move(names));
}

const Products& Products::known() {
  static const Products products{kProducts};
  return products;
}

const Product* Products::called(std::string_view name) const {
  const Product* const* const product = byName_.find(name);
  return product == nullptr ? nullptr : *product;
}

KnownProduct Products::of(const Invocation& invocation) const {
  for (const std::string& name : invocation.names()) {
    const Product* const product = called(name);
    if (product == nullptr) continue;
    // Below a module, and below a program of such a name (mlx_lm.server), words follow.
    for (const std::string_view whole :
         {std::string_view(invocation.module), std::string_view(invocation.program)}) {
      if (whole.size() > name.size() && whole.starts_with(name) && whole[name.size()] == '.') {
        return {product, whole.substr(name.size() + 1)};
      }
    }
    return {product, {}};
  }
  return {};
}

}  // namespace recognition
