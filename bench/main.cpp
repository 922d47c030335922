// Measures what the program costs: see docs/performance.md.
#include <cstdio>
#include <string_view>

#include "options.h"
#include "parts.h"
#include "report.h"

int main(int argc, char** argv) {
  if (argc == 2 && std::string_view(argv[1]) == "--sampled-memory") {
    std::printf("%.0f\n", bench::sampledMemory());
    return 0;
  }
  const bench::Options options = bench::parseOptions(argc, argv);
  bench::Report report;
  if (options.wants("refresh") || options.wants("peers")) measureRefresh(options, report);
  if (options.wants("steps")) measureSteps(options, report);
  if (options.wants("growth")) measureGrowth(options, report);
  if (options.wants("rest")) measureRest(options, report);
  if (report.writeJson(options.json)) return 0;
  std::fprintf(stderr, "vorda_bench: can't write %s\n", options.json.c_str());
  return 1;
}
