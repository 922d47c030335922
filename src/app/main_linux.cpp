#include <cstdio>
#include <span>
#include <string>

#include "app/branding.h"
#include "app/front_end_choice.h"
#include "app/program_options.h"
#include "app/surroundings.h"
#include "app/tray_program.h"
#include "frontends/terminal/character_set.h"
#include "frontends/terminal/run_terminal.h"
#include "frontends/text/printed.h"
#include "frontends/text/text_front_end.h"
#include "platform/heap.h"
#include "platform/linux/procfs.h"

namespace {

constexpr int kNothingToShow = 1;
constexpr int kWrongUse = 2;

/// Becomes the tray's program if the surroundings ask for it; returns only if they do not, or if
/// that fails.
void tryTray(const Surroundings& surroundings) {
  const std::string program = findTrayProgram();
  if (program.empty()) return;
  if (surroundings.onTerminal) std::puts("vorda: running in the system tray");
  std::fflush(stdout);
  becomeTrayProgram(program);
}

/// Without options.
int showMenu(CharacterSet characters) {
  const Surroundings surroundings = lookAround();
  if (chooseFrontEnd(surroundings) == FrontEndKind::tray) tryTray(surroundings);
  return surroundings.onTerminal ? terminal::runTerminal(Branding::aboutAlert())
                                 : runText(characters, stdout);
}

int show(Output output, CharacterSet characters) {
  switch (output) {
    case Output::help:
      return printOrSay(helpText(), "the help", stdout);
    case Output::version:
      return printOrSay(versionText(), "the version", stdout);
    case Output::text:
      return runText(characters, stdout);
    case Output::json:
      return runJson(Branding::version(), stdout);
    case Output::bar:
      return runBar(stdout);
    case Output::watchedBar:
      return watchBar(stdout);
    case Output::menu:
      break;
  }
  return showMenu(characters);
}

}  // namespace

int main(int argc, char** argv) {
  platform::keepHeapSmall();
  const std::span<const char* const> words(argv, static_cast<std::size_t>(argc));
  const ProgramOptions options = programOptions(words.subspan(words.empty() ? 0 : 1));
  if (!options.problem.empty()) {
    std::fprintf(stderr, "vorda: %s\n", options.problem.c_str());
    return kWrongUse;
  }
  const bool looks = options.output != Output::help && options.output != Output::version;
  if (const std::string problem = platform::problemOfProc(); looks && !problem.empty()) {
    std::fprintf(stderr, "vorda: %s\n", problem.c_str());
    return kNothingToShow;
  }
  const bool unicode = terminal::takeCharacterSet();
  return show(options.output, unicode ? CharacterSet::unicode : CharacterSet::ascii);
}
