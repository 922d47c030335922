// The program in a terminal, with waits that its arguments say: what runTerminal() takes, in the
// order of runWith() in terminal_session.cpp.
#include <clocale>
#include <cstdlib>

#include "app/branding.h"
#include "frontends/terminal/run_terminal.h"

int main(int argc, char** argv) {
  constexpr int kArguments = 9;
  if (argc != kArguments) return EXIT_FAILURE;
  std::setlocale(LC_CTYPE, "");
  const terminal::TerminalWaits waits{
      .hint = std::atof(argv[1]),
      .input = {.betweenKeys = std::atof(argv[2]),
                .still = std::atof(argv[3]),
                .slowestRepeat = std::atof(argv[4]),
                .firstRepeat = std::atof(argv[5]),
                .pastePatience = std::atof(argv[6])},
      .controller = {.refresh = std::atof(argv[7]), .quit = std::atof(argv[8])}};
  return runTerminal(Branding::aboutAlert(), waits);
}
