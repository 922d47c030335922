// Storms over the real program, for as long as one likes:
//
//   vorda_soak [--seconds=120] [GoogleTest's options]
//
// Each storm has one file here. One that this machine can't have is skipped and says why.
#include <gtest/gtest.h>

#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "soak/own_world.h"
#include "soak/storm.h"

int main(int argc, char** argv) {
  std::setlocale(LC_CTYPE, "C.UTF-8");  // the screen model measures characters as a terminal does
  std::signal(SIGPIPE, SIG_IGN);        // a program that has ended is told by its silence
  testing::InitGoogleTest(&argc, argv);
  for (int i = 1; i < argc; ++i) {
    const std::string option = argv[i];
    const std::string kSeconds = "--seconds=";
    const double seconds = option.starts_with(kSeconds) ? std::atof(argv[i] + kSeconds.size()) : 0;
    if (seconds <= 0) {
      std::fputs("usage: vorda_soak [--seconds=120] [GoogleTest's options]\n", stderr);
      return 2;
    }
    Storm::setSeconds(seconds);
  }
  return runInOwnWorld([] { return RUN_ALL_TESTS(); });
}
