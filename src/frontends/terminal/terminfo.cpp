#include "frontends/terminal/terminfo.h"

// curses.h comes before term.h, which needs its types.
#include <curses.h>
#include <term.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <string_view>
#include <utility>

#include "frontends/terminal/direct_color.h"
#include "text/base64.h"
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

/// Checks the terminal that setupterm() has set up.
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

/// A terminal that takes control sequences of this form ignores those that it does not know.
bool takesControlSequences() {
  return isPresent(cursor_address) && std::string_view(cursor_address).starts_with("\033[");
}

std::string* sink = nullptr;  // where addToSink() puts the single bytes that tputs() gives it

int addToSink(int byte) {
  *sink += static_cast<char>(byte);
  return byte;
}

void append(std::string& bytes, const char* capability) {
  if (!isPresent(capability)) return;
  sink = &bytes;
  tputs(capability, 1, addToSink);
  sink = nullptr;
}

}  // namespace

TerminalCheck checkTerminal() {
  const std::string_view name = variable("TERM");
  if (name.empty()) return {.problem = "TERM is not set, so the kind of terminal is unknown"};
  const std::string quotedName = "\"" + text::displayName(name) + "\"";

  int status = 0;
  std::string known(name);
  if (setupterm(known.c_str(), STDOUT_FILENO, &status) != OK) {
    const char* const standIn = standInFor(name);
    if (standIn == nullptr || setupterm(standIn, STDOUT_FILENO, &status) != OK) {
      return {.problem = "the kind of terminal " + quotedName + " (TERM) is not known here"};
    }
    known = standIn;
  }
  TerminalCheck check = checked(quotedName);
  check.name = std::move(known);
  del_curterm(cur_term);
  return check;
}

const char* standInFor(std::string_view name) {
  constexpr std::string_view kLikeXterm[] = {"xterm-kitty", "xterm-ghostty", "alacritty", "foot",
                                             "wezterm"};
  const bool isLikeXterm = std::ranges::any_of(kLikeXterm, [name](std::string_view known) {
    return name == known || (name.starts_with(known) && name[known.size()] == '-');
  });
  return isLikeXterm ? "xterm-256color" : nullptr;
}

std::string pasteBrackets(bool on) {
  if (const char* const known = tigetstr(on ? "BE" : "BD"); isPresent(known)) return known;
  // Many descriptions do not mention it.
  if (!takesControlSequences()) return {};
  return on ? "\033[?2004h" : "\033[?2004l";
}

std::string synchronizedUpdate(bool on) {
  if (!takesControlSequences()) return {};
  return on ? "\033[?2026h" : "\033[?2026l";
}

std::string clipboardBytes(std::string_view text) {
  if (!takesControlSequences()) return {};
  return "\033]52;c;" + text::inBase64(text) + "\a";
}

std::string resetBytes(int lastRow) {
  std::string bytes = synchronizedUpdate(false) + pasteBrackets(false);
  const char* const mouse = tigetstr("XM");
  if (isPresent(mouse)) {
    append(bytes, tiparm(mouse, 0));
  } else if (key_mouse != nullptr) {
    bytes += "\033[?1000l";
  }
  append(bytes, exit_attribute_mode);
  append(bytes, orig_pair);
  append(bytes, keypad_local);
  append(bytes, cursor_normal);
  append(bytes, tiparm(cursor_address, lastRow, 0));
  append(bytes, exit_ca_mode);
  return bytes + "\r";
}

}  // namespace terminal
