#include "frontends/terminal/keys_help.h"

namespace terminal {

Alert keysAlert() {
  return {.messageText = "Keys",
          .informativeText =
              "↑ ↓  j k     Move\n"
              "PgUp PgDn    A screen back or on\n"
              "Home End     First or last row\n"
              "Enter →      Open a row’s menu\n"
              "Enter        Choose\n"
              "← Esc        Close it again\n"
              "Tab          Next button\n"
              "r            Refresh now\n"
              "f            Fold families, unfold\n"
              "?            This list\n"
              "q            Quit Vorda\n"
              "\n"
              "Enter, → and a click choose what has stood in its place for 0.3 s. What comes "
              "sooner, and what is pasted, does nothing.\n"
              "\n"
              "The mouse works, too: click a row or a button, turn the wheel. "
              "Hold Shift to select text.\n"
              "\n"
              "A letter in brackets ties a process to its bar in the strip."};
}

}  // namespace terminal
