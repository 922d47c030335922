#include "app/program_options.h"

#include <algorithm>
#include <string_view>

#include "app/branding.h"
#include "text/display_line.h"

namespace {

struct KnownOption {
  std::string_view name;
  Output output;
};

constexpr KnownOption kKnownOptions[] = {
    {"--help", Output::help}, {"--version", Output::version}, {"--text", Output::text},
    {"--json", Output::json}, {"--bar", Output::bar},
};
constexpr std::string_view kWatch = "--watch";
constexpr const char* kSeeHelp = " (see vorda --help)";

ProgramOptions problem(const std::string& words) {
  return {.problem = words + kSeeHelp};
}

}  // namespace

ProgramOptions programOptions(std::span<const char* const> arguments) {
  ProgramOptions options;
  bool watches = false;
  for (const std::string_view argument : arguments) {
    if (argument == kWatch) {
      watches = true;
      continue;
    }
    const auto known = std::ranges::find(kKnownOptions, argument, &KnownOption::name);
    if (known == std::end(kKnownOptions)) {
      const bool isOption = argument.starts_with('-');
      return problem((isOption ? "unknown option '" : "unexpected argument '") +
                     text::displayName(argument) + "'");
    }
    if (options.output != Output::menu && options.output != known->output) {
      return problem("only one of --help, --version, --text, --json and --bar can be given");
    }
    options.output = known->output;
  }
  if (!watches) return options;
  if (options.output != Output::bar) return problem("--watch goes with --bar");
  return {.output = Output::watchedBar};
}

std::string helpText() {
  return "Usage: vorda [OPTION]\n"
         "Show who holds the machine's memory, and the AI workloads among the processes.\n"
         "\n"
         "Without an option it looks where it is started: in a pipe it prints the menu once\n"
         "as text; on a terminal over ssh, or without a display, it shows the menu on the\n"
         "whole terminal; on a desktop, an icon in the system tray.\n"
         "\n"
         "      --text      print the menu once, for people to read\n"
         "      --json      print all that was found out once, for programs to read\n"
         "      --bar       print one line of JSON for a status bar\n"
         "      --bar --watch\n"
         "                  print such a line every 5 seconds, until nobody reads them\n"
         "      --help      print this text\n"
         "      --version   print the version\n"
         "\n"
         "Exit status: 0 when all went well, 1 when something could not be shown or written,\n"
         "2 when the options make no sense. The manual is vorda(1).\n";
}

std::string versionText() {
  return "vorda " + Branding::version() + "\n";
}
