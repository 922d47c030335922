#pragma once

#include <span>
#include <string_view>

#include "scanner/command_line/invocation.h"
#include "scanner/roles/product.h"
#include "text/name_table.h"

namespace recognition {

/// A product that an invocation is known to be.
struct KnownProduct {
  const Product* product = nullptr;  ///< null: none
  std::string_view tail;             ///< what follows the product's name: "cli.train-ppo-ray" of
                                     ///< "openrlhf.cli.train-ppo-ray"
};

/// The rows of a table by the names that they are known as.
class Products {
 public:
  explicit Products(std::span<const Product> rows);

  /// All of product_table.h.
  static const Products& known();

  /// The row of what an invocation runs. `tail` is a part of the invocation.
  KnownProduct of(const Invocation& invocation) const;

  /// The row of a normalized name; null: none.
  const Product* called(std::string_view name) const;

 private:
  text::NameTable<const Product*> byName_;
};

}  // namespace recognition
