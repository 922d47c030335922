#include "frontends/qt/own_sigterm.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <thread>

namespace {

TEST(OwnSigterm, EndsNothingWhereALibraryRaisesIt) {
  EXPECT_EXIT(
      {
        surviveOwnSigterm();
        std::raise(SIGTERM);
        std::thread([] { std::raise(SIGTERM); }).join();
        _exit(3);
      },
      testing::ExitedWithCode(3), "");
}

TEST(OwnSigterm, EndsTheProgramWhereSomebodySendsIt) {
  EXPECT_EXIT(
      {
        surviveOwnSigterm();
        kill(getpid(), SIGTERM);
        _exit(3);
      },
      testing::KilledBySignal(SIGTERM), "");
}

}  // namespace
