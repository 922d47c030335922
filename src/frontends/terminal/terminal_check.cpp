#include "frontends/terminal/terminal_check.h"

// curses before the terminal's capabilities: term.h needs its types.
#include <curses.h>
#include <term.h>
#include <unistd.h>

#include <cstdlib>

#include "frontends/terminal/capability.h"
#include "frontends/terminal/direct_color.h"
#include "text/display_line.h"

namespace terminal {
namespace {

std::string_view variable(const char* name) {
  const char* const value = std::getenv(name);
  return value != nullptr ? value : "";
}

bool canMoveCursor() {
  return isPresent(tigetstr("cup"));
}

bool hasDirectColor() {
  // RGB may be a flag, a number or a text.
  return tigetflag("RGB") > 0 || tigetnum("RGB") > 0 || isPresent(tigetstr("RGB")) ||
         tigetflag("Tc") > 0;
}

/// Of the terminal that is set up.
TerminalCheck checked(const std::string& quotedName) {
  if (!canMoveCursor()) {
    return {.problem = "a terminal of the kind " + quotedName + " (TERM) can't show a menu"};
  }
  const ColorHints hints{.colors = tigetnum("colors"),
                         .directByName = hasDirectColor(),
                         .colorTerm = variable("COLORTERM"),
                         .noColor = variable("NO_COLOR")};
  TerminalCheck check{.depth = colorDepth(hints)};
  if (check.depth == ColorDepth::direct && tigetnum("colors") <= 256) {
    check.description = directColorDescription();
  }
  return check;
}

}  // namespace

TerminalCheck checkTerminal() {
  const std::string_view name = variable("TERM");
  if (name.empty()) return {.problem = "TERM is not set, so the kind of terminal is unknown"};
  const std::string quotedName = "\"" + text::displayName(name) + "\"";

  int status = 0;
  if (setupterm(nullptr, STDOUT_FILENO, &status) != OK) {
    return {.problem = "the kind of terminal " + quotedName + " (TERM) is not known here"};
  }
  TerminalCheck check = checked(quotedName);
  del_curterm(cur_term);
  return check;
}

}  // namespace terminal
