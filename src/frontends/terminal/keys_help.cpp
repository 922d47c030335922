#include "frontends/terminal/keys_help.h"

namespace terminal {

Alert keysAlert() {
  return {.messageText = "Keys",
          .informativeText =
              "↑ ↓  j k     Move\n"
              "PgUp PgDn    A screen (Ctrl-U, -D)\n"
              "Home End     First or last row (g G)\n"
              "Enter → F9   Open a row’s menu\n"
              "Enter        Choose\n"
              "← Esc        Close it again\n"
              "Tab          Next button\n"
              "/ F4         Filter what is shown\n"
              "F3  n N      Find; next, previous\n"
              "s            Sort: GPU, name, start\n"
              "c C          Copy command; show it\n"
              "r            Refresh now\n"
              "f            Fold families, unfold\n"
              "? F1         This list\n"
              "q F10        Quit Vorda\n"
              "\n"
              "Enter, → and a click choose what has stood in its place for 0.3 s. What comes "
              "sooner, and what is pasted, does nothing.\n"
              "\n"
              "The mouse works, too: click a row or a button, turn the wheel. "
              "Hold Shift to select text.\n"
              "\n"
              "A letter in brackets ties a process to its segment in the strip."};
}

}  // namespace terminal
