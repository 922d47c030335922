#include "frontends/terminal/run_terminal.h"

#include <cstdio>
#include <string>
#include <utility>

#include "frontends/terminal/curses_screen.h"
#include "frontends/terminal/terminal_front_end.h"
#include "ui/status_bar_controller.h"

namespace terminal {

int runTerminal(Alert about) {
  std::string error;
  const auto screen = CursesScreen::open(error);
  if (!screen) {
    std::fprintf(stderr, "vorda: %s\n", error.c_str());
    return 1;
  }
  TerminalFrontEnd frontEnd(*screen);
  StatusBarController controller(frontEnd, std::move(about));
  frontEnd.run(controller);
  return 0;
}

}  // namespace terminal
