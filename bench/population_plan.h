#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace bench {

/// What one idle process shall look like from outside.
struct IdleProcess {
  std::string executable;              ///< the name of its executable file
  std::vector<std::string> arguments;  ///< with argv[0]
  bool rewritten = false;  ///< its arguments overwritten by one line with blanks between them
  int owner = 0;           ///< 0: the user who runs the bench; else a user of its own
  int memoryKiB = 0;       ///< memory of its own
  int threads = 1;
  int copies = 0;   ///< so many more of itself it starts, as its children
  int wakesMs = 0;  ///< wakes up each time so many milliseconds have passed; 0: never
};

/// Which processes a population consists of.
enum class Mix {
  machine,   ///< what runs on a developer's machine, a few AI workloads among it
  ordinary,  ///< the same without what a scan would keep
  aiWork,    ///< of the same the AI workloads alone
};

/// `count` processes, the same in every run.
std::vector<IdleProcess> planPopulation(std::size_t count, Mix mix);

/// The same with a quarter of them awake: they run for a moment at least every `wakesMs`.
std::vector<IdleProcess> planAwakePopulation(std::size_t count, int wakesMs);

/// One training with 12 workers that it has started: a family of 13.
IdleProcess planTraining();

/// `count` processes with command lines of about `length` bytes each, none of them kept.
std::vector<IdleProcess> planCommandLines(std::size_t count, std::size_t length);

}  // namespace bench
