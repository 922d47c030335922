#pragma once

#include <memory>
#include <string_view>

#include "ui/menu.h"

/// Looks for rows by words that the user types.
namespace RowSearch {

/// Whether a row's process has these words in its name, pid, owner or command line, in any case of
/// ASCII letters; of a row without a process, whether its title has. Other items never match.
bool matches(const MenuItem& row, std::string_view words);

/// The strip and the rows that match, each section under its heading; a label where none does.
std::shared_ptr<const Menu> filtered(const Menu& menu, std::string_view words);

}  // namespace RowSearch
