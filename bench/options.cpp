#include "options.h"

#include <cstdio>
#include <cstdlib>
#include <sstream>

namespace bench {
namespace {

constexpr const char* kUsage =
    "usage: vorda_bench [option...]\n"
    "  --parts=LIST      what to measure, of refresh,work,peers,pace,steps,credentials,growth,\n"
    "                    rest,opening,list (all)\n"
    "  --processes=LIST  sizes of the population (500,2000,5000)\n"
    "  --rounds=N        how often each is measured (15)\n"
    "  --json=PATH       where to write the figures (bench.json)\n";

[[noreturn]] void failUsage(const std::string& what) {
  std::fprintf(stderr, "vorda_bench: %s\n%s", what.c_str(), kUsage);
  std::exit(2);
}

std::vector<std::string> listOf(const std::string& text) {
  std::vector<std::string> list;
  std::istringstream stream(text);
  for (std::string entry; std::getline(stream, entry, ',');) list.push_back(entry);
  return list;
}

int positive(const std::string& text) {
  char* end = nullptr;
  const long number = std::strtol(text.c_str(), &end, 10);
  constexpr long kMost = 30000;  // what pids there are
  if (end == text.c_str() || *end != '\0' || number < 1 || number > kMost) {
    failUsage("not a number from 1 to 30000: " + text);
  }
  return static_cast<int>(number);
}

}  // namespace

Options parseOptions(int argc, char** argv) {
  Options options;
  const auto known = options.parts;
  for (int i = 1; i < argc; ++i) {
    const std::string option = argv[i];
    const auto equals = option.find('=');
    const std::string name = option.substr(0, equals);
    const std::string value = equals == std::string::npos ? "" : option.substr(equals + 1);
    if (name == "--parts") {
      options.parts.clear();
      for (const auto& part : listOf(value)) {
        if (!known.contains(part)) failUsage("there is no part called " + part);
        options.parts.insert(part);
      }
    } else if (name == "--processes") {
      options.processes.clear();
      for (const auto& size : listOf(value)) {
        options.processes.push_back(static_cast<std::size_t>(positive(size)));
      }
    } else if (name == "--rounds") {
      options.rounds = positive(value);
    } else if (name == "--json") {
      options.json = value;
    } else if (name == "--help") {
      std::fputs(kUsage, stdout);
      std::exit(0);
    } else {
      failUsage("unknown option " + option);
    }
  }
  return options;
}

}  // namespace bench
