// Measures what the program costs: see docs/performance.md.
#include <sys/resource.h>

#include <cstdio>
#include <string_view>

#include "options.h"
#include "parts.h"
#include "population.h"
#include "report.h"

namespace {

/// Where that is allowed, other work on the machine shall not stretch what is measured: two
/// refreshes of a monitor can't be told apart when one takes as long as the time between them.
void comeFirst() {
  constexpr int kAheadOfMost = -10;
  setpriority(PRIO_PROCESS, 0, kAheadOfMost);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 2 && std::string_view(argv[1]) == "--sampled-memory") {
    std::printf("%.0f\n", bench::sampledMemory());
    return 0;
  }
  const bench::Options options = bench::parseOptions(argc, argv);
  bench::rememberArguments(argc, argv);
  comeFirst();
  bench::Report report;
  if (options.wants("refresh") || options.wants("peers")) measureRefresh(options, report);
  if (options.wants("work")) measureWork(options, report);
  if (options.wants("pace")) measurePace(options, report);
  if (options.wants("steps")) measureSteps(options, report);
  if (options.wants("credentials")) measureCredentials(options, report);
  if (options.wants("growth")) measureGrowth(options, report);
  if (options.wants("rest")) measureRest(options, report);
  if (options.wants("opening")) measureOpening(options, report);
  if (options.wants("list")) measureLongList(options, report);
  report.tellMissed();
  if (report.writeJson(options.json)) return 0;
  std::fprintf(stderr, "vorda_bench: can't write %s\n", options.json.c_str());
  return 1;
}
