#include "frontends/terminal/paste_brackets.h"

// curses before the terminal's capabilities: term.h needs its types.
#include <curses.h>
#include <term.h>

#include <string_view>

#include "frontends/terminal/capability.h"

namespace terminal {

std::string pasteBrackets(bool on) {
  if (const char* const known = tigetstr(on ? "BE" : "BD"); isPresent(known)) return known;
  // Many descriptions do not speak of it. Whoever takes commands of this form passes over one
  // that it does not know.
  const bool takesControlSequences =
      isPresent(cursor_address) && std::string_view(cursor_address).starts_with("\033[");
  if (!takesControlSequences) return {};
  return on ? "\033[?2004h" : "\033[?2004l";
}

}  // namespace terminal
