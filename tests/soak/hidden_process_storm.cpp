// Processes of which /proc says nothing.
#include <sys/mount.h>
#include <unistd.h>

#include "soak/crowd.h"
#include "soak/storm.h"
#include "tools/child_process.h"
#include "tools/forked.h"

namespace {

class HiddenProcesses : public Storm {};

TEST_F(HiddenProcesses, ByHidepid) {
  if (geteuid() != 0) GTEST_SKIP() << "only root can mount a proc file system";
  const bool canMount =
      resultOfForked([] {
        return makeMountsPrivate() && mount("proc", "/proc", "proc", 0, "hidepid=2") == 0 ? 1 : 0;
      }) == 1;
  if (!canMount) GTEST_SKIP() << "no proc file system can be mounted here";

  const Crowd others({{"living", 500}});
  const ChildProcess own(playProcess({"--user", std::to_string(kStranger)},
                                     {"llama-server", "--model", "/models/own.gguf"}));
  LedProgram program([] {
    return makeMountsPrivate() && mount("proc", "/proc", "proc", 0, "hidepid=2") == 0 &&
           becomeStranger();
  });
  ride(program, {own.pid()});
  const auto answer = program.refresh();
  for (const pid_t other : others.steady()) EXPECT_FALSE(answer.pids.contains(other));
}

}  // namespace
