#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frontends/terminal/cell_grid.h"
#include "frontends/terminal/glyphs.h"
#include "frontends/terminal/screen.h"

namespace terminal {

class MenuView;

/// One of the keys that the last line names.
struct FooterKey {
  Box place;  ///< on the screen, with its meaning
  std::string name;
  std::string_view meaning;
  Input key = {};  ///< what a click on it presses; Kind::other for nothing
};

/// The keys that work now, as far as the line has room: the first ones, which are the most obvious,
/// are left out where it has too little. None while a hint or words to look for
/// stand there.
std::vector<FooterKey> footerKeys(const MenuView& view, const Box& line, const Glyphs& glyphs);

}  // namespace terminal
