#include "platform/macos/launchctl.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <tuple>

#include "macos/stage_test.h"

namespace {

using platform::Capture;
using platform::Clock;
using Texts = std::vector<std::string>;
using std::chrono::milliseconds;

/// Longer than anything here takes.
Clock::time_point nextMinute() {
  return Clock::now() + std::chrono::minutes(1);
}

class Launchctl : public StageTest {};

TEST_F(Launchctl, GetsItsArgumentsUnchanged) {
  const Texts arguments{"bootout", "gui/501/com.a", "/Users/ada/a b's \"c\" $HOME.plist", "", "é"};
  EXPECT_EQ(platform::runLaunchctl(arguments, Capture::errors, nextMinute()).status, 0);
  EXPECT_EQ(Stage::launchctlCalls(),
            (Texts{"bootout|gui/501/com.a|/Users/ada/a b's \"c\" $HOME.plist||é"}));
}

TEST_F(Launchctl, ErrorsAloneAreCaptured) {
  Stage::setLaunchctl("echo out; echo err >&2; exit 3");
  const auto reply = platform::runLaunchctl({"x"}, Capture::errors, nextMinute());
  EXPECT_EQ(reply.status, 3);
  EXPECT_EQ(reply.text, "err\n");
}

/// While it lives, this program's standard output goes into a file.
class OutputInFile {
 public:
  explicit OutputInFile(const std::string& path) : standard_(dup(STDOUT_FILENO)) {
    const int file = open(path.c_str(), O_WRONLY | O_CREAT, 0600);
    dup2(file, STDOUT_FILENO);
    close(file);
  }
  ~OutputInFile() {
    dup2(standard_, STDOUT_FILENO);
    close(standard_);
  }
  OutputInFile(const OutputInFile&) = delete;
  OutputInFile& operator=(const OutputInFile&) = delete;

 private:
  int standard_;
};

TEST_F(Launchctl, WhatIsNoErrorGoesNowhere) {
  Stage::setLaunchctl("echo out");
  const std::string path = Stage::homePath() + "/output";
  {
    const OutputInFile output(path);
    std::ignore = platform::runLaunchctl({"x"}, Capture::errors, nextMinute());
  }
  EXPECT_EQ(std::filesystem::file_size(path), 0);
}

TEST_F(Launchctl, EverythingIsCapturedInItsOrder) {
  Stage::setLaunchctl("echo one; echo two >&2; echo three");
  const auto reply = platform::runLaunchctl({"x"}, Capture::everything, nextMinute());
  EXPECT_EQ(reply.status, 0);
  EXPECT_EQ(reply.text, "one\ntwo\nthree\n");
}

TEST_F(Launchctl, MegabytesAreReadWhileItRuns) {
  Stage::setLaunchctl("head -c 5000000 /dev/zero | tr '\\0' x; echo end");
  const auto reply = platform::runLaunchctl({"list"}, Capture::everything, nextMinute());
  EXPECT_EQ(reply.status, 0);
  EXPECT_EQ(reply.text.size(), 5000004);
  EXPECT_TRUE(reply.text.ends_with("xend\n"));
}

TEST_F(Launchctl, WhatIsNotUtf8IsNoText) {
  Stage::setLaunchctl("printf 'good\\377' >&2; exit 5");
  const auto reply = platform::runLaunchctl({"x"}, Capture::errors, nextMinute());
  EXPECT_EQ(reply.status, 5);
  EXPECT_EQ(reply.text, "");
}

TEST_F(Launchctl, DeathBySignalIsNoSuccess) {
  Stage::setLaunchctl("kill -9 $$");
  EXPECT_NE(platform::runLaunchctl({"x"}, Capture::errors, nextMinute()).status, 0);
}

TEST_F(Launchctl, MissingSaysWhy) {
  Stage::removeLaunchctl();
  const auto reply = platform::runLaunchctl({"list"}, Capture::everything, nextMinute());
  EXPECT_EQ(reply.status, -1);
  EXPECT_NE(reply.text, "");
}

/// The pid that launchctl wrote down before it hung; 0: it has not come so far.
pid_t pidOfHanging() {
  pid_t pid = 0;
  std::ifstream(Stage::homePath() + "/pid") >> pid;
  return pid;
}

TEST_F(Launchctl, HangingIsKilledAtTheDeadline) {
  const std::string body = "echo $$ >'" + Stage::homePath() + "/pid'; echo partial; ";
  for (const char* rest :
       {"exec sleep 1000", "trap '' TERM; exec sleep 1000", "exec >&- 2>&-; exec sleep 1000"}) {
    std::filesystem::remove(Stage::homePath() + "/pid");
    Stage::setLaunchctl(body + rest);
    // A busy machine takes longer to start a shell.
    for (milliseconds limit(100); pidOfHanging() == 0 && limit < milliseconds(60'000); limit *= 2) {
      const auto reply =
          platform::runLaunchctl({"list"}, Capture::everything, Clock::now() + limit);
      EXPECT_EQ(reply.status, -1) << rest;
      EXPECT_EQ(reply.text, "launchctl did not answer in time") << rest;
      EXPECT_TRUE(reply.isLate) << rest;
    }
    const pid_t pid = pidOfHanging();
    ASSERT_GT(pid, 1) << rest;
    EXPECT_NE(kill(pid, 0), 0) << rest;
  }
}

TEST_F(Launchctl, PastDeadlineFailsAtOnce) {
  EXPECT_EQ(platform::runLaunchctl({"list"}, Capture::everything, Clock::now()).status, -1);
}

}  // namespace
