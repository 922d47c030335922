#include "frontends/terminal/terminal_reset.h"

// curses before the terminal's capabilities: term.h needs its types.
#include <curses.h>
#include <term.h>

#include "frontends/terminal/capability.h"
#include "frontends/terminal/paste_brackets.h"

namespace terminal {
namespace {

std::string* sink = nullptr;  // tputs() hands on single bytes

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

std::string resetBytes(int lastRow) {
  std::string bytes = pasteBrackets(false);
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
