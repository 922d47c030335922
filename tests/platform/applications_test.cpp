// Starts programs of the test's own: small scripts that write down how they were started, and
// end.
#include "platform/applications.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <thread>

#include "platform/linux/detached_program.h"
#include "tools/forked.h"
#include "tools/scoped_variable.h"
#include "tools/temp_folder.h"

namespace {

class Applications : public testing::Test {
 protected:
  /// A script that writes its arguments, and what `lines` print, into the file `name`.txt.
  std::string program(const std::string& name, const std::string& lines = "") const {
    std::string path = folder_ / ("bin/" + name);
    const std::string output = folder_ / (name + ".txt");
    folder_.write("bin/" + name, "#!/bin/sh\n{ printf '[%s]' \"$@\"; echo; " + lines + "\n} > " +
                                     output + ".new\nmv " + output + ".new " + output + "\n");
    std::filesystem::permissions(path, std::filesystem::perms::owner_all);
    return path;
  }

  void install(const std::string& id, const std::string& lines) const {
    folder_.write("applications/" + id + ".desktop",
                  "[Desktop Entry]\nType=Application\n" + lines + "\n");
  }

  bool hasRun(const std::string& name) const {
    return std::filesystem::exists(folder_ / (name + ".txt"));
  }

  /// What the program wrote down; "" when it did not run within a minute.
  std::string waitFor(const std::string& name) const {
    for (int i = 0; i < 6000 && !hasRun(name); ++i) {
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    std::ostringstream text;
    text << std::ifstream(folder_ / (name + ".txt")).rdbuf();
    return text.str();
  }

  TempFolder folder_;
  ScopedVariable own_{"XDG_DATA_HOME", folder_.path().c_str()};
  ScopedVariable shared_{"XDG_DATA_DIRS", "/nonexistent"};
  ScopedVariable desktop_{"XDG_CURRENT_DESKTOP", "Test"};
  ScopedVariable path_{"PATH", ((folder_ / "bin").string() + ":/usr/bin:/bin").c_str()};
};

TEST_F(Applications, TheSystemMonitorIsTheDesktopsOwn) {
  install("a", "Categories=System;Monitor;\nExec=" + program("other"));
  install("b", "Categories=Test;System;Monitor;\nExec=" + program("own") + " \"a b\" %U $HOME;c");
  platform::openSystemMonitor();
  EXPECT_EQ(waitFor("own"), "[a b][$HOME;c]\n");
  EXPECT_FALSE(hasRun("other"));
}

TEST_F(Applications, TheNextSystemMonitorTakesThePlaceOfOneThatCannotStart) {
  program("last");
  install("a", "Categories=System;Monitor;\nTryExec=/nonexistent\nExec=" + program("tried"));
  install("b", "Categories=System;Monitor;\nExec=/nonexistent");
  install("c", "Categories=System;Monitor;\nExec=\"open");
  install("d", "Categories=System;Monitor;");
  install("e", "Categories=System;Monitor;\nPath=/nonexistent\nExec=" + program("nowhere"));
  install("f", "Categories=System;Monitor;\nTryExec=last\nExec=last");
  platform::openSystemMonitor();
  EXPECT_EQ(waitFor("last"), "[]\n");
  EXPECT_FALSE(hasRun("tried"));
  EXPECT_FALSE(hasRun("nowhere"));
}

TEST_F(Applications, OneForTheTerminalRunsInOne) {
  program("xdg-terminal-exec");
  install("a", "Categories=System;Monitor;\nTerminal=true\nExec=" + program("top") + " -x");
  platform::openSystemMonitor();
  EXPECT_EQ(waitFor("xdg-terminal-exec"), "[" + (folder_ / "bin/top").string() + "][-x]\n");
  EXPECT_FALSE(hasRun("top"));
}

TEST_F(Applications, OneForTheTerminalIsPassedOverWithoutOne) {
  const ScopedVariable path("PATH", (folder_ / "bin").c_str());
  install("a", "Categories=System;Monitor;\nTerminal=true\nExec=" + program("top"));
  install("b", "Categories=System;Monitor;\nExec=" + program("window", "PATH=/usr/bin:/bin"));
  platform::openSystemMonitor();
  EXPECT_EQ(waitFor("window"), "[]\n");
  EXPECT_FALSE(hasRun("top"));
}

TEST_F(Applications, DockerDesktopIsFoundByItsName) {
  install("docker", "Exec=" + program("other"));
  install("docker-desktop", "NoDisplay=true\nExec=" + program("docker-desktop"));
  platform::openDockerDesktop();
  EXPECT_EQ(waitFor("docker-desktop"), "[]\n");
  EXPECT_FALSE(hasRun("other"));
}

TEST_F(Applications, WithoutOneNothingHappens) {
  install("a", "Categories=System;\nExec=" + program("other"));
  platform::openSystemMonitor();
  platform::openDockerDesktop();
  // What was started by mistake would have run by the time that a later one has.
  install("b", "Categories=System;Monitor;\nExec=" + program("later"));
  platform::openSystemMonitor();
  EXPECT_EQ(waitFor("later"), "[]\n");
  EXPECT_FALSE(hasRun("other"));
}

TEST_F(Applications, APlainStartHasNothingToDoWithUs) {
  const int open = ::open("/dev/zero", O_RDONLY);  // inherited, were it not closed
  ASSERT_GT(open, 2);
  const std::string path =
      program("detached",
              "cut -d' ' -f4,6 /proc/$$/stat; echo $$; readlink /proc/$$/fd/0 /proc/$$/fd/2; "
              "test -e /proc/$$/fd/" +
                  std::to_string(open) + " && echo open; grep SigIgn /proc/$$/status; pwd");
  // In a fork: as its pid namespace's first process the test gets all who lose their parents.
  const int failed = resultOfForked([&] {
    std::signal(SIGPIPE, SIG_IGN);
    EXPECT_EQ(platform::startDetached({path}, folder_.path()), 0);
    std::istringstream facts(waitFor("detached"));
    std::string arguments, parent, session, pid, in, err, label, ignored, place;
    facts >> arguments >> parent >> session >> pid >> in >> err >> label >> ignored >> place;
    EXPECT_NE(parent, std::to_string(getpid()));
    EXPECT_EQ(session, pid);
    EXPECT_EQ(in, "/dev/null");
    EXPECT_EQ(err, "/dev/null");
    EXPECT_EQ(label, "SigIgn:");
    EXPECT_EQ(std::strtoull(ignored.c_str(), nullptr, 16) & (1ULL << (SIGPIPE - 1)), 0U) << ignored;
    EXPECT_EQ(place, folder_.path());

    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD) << "nothing is left to reap";
    return HasFailure() ? 1 : 0;
  });
  EXPECT_EQ(failed, 0) << "what went wrong stands above";
  close(open);
}

TEST_F(Applications, AStartThatFailsSaysWhy) {
  folder_.write("bin/plain", "no program");
  EXPECT_EQ(platform::startDetached({"/nonexistent"}, ""), ENOENT);
  EXPECT_EQ(platform::startDetached({"no-such-program"}, ""), ENOENT);
  EXPECT_EQ(platform::startDetached({(folder_ / "bin/plain").string()}, ""), ENOENT);
  EXPECT_EQ(platform::startDetached({""}, ""), ENOENT);
  EXPECT_EQ(platform::startDetached({program("x")}, "/nonexistent"), ENOENT);
  folder_.write("bin/odd", "\x7f no program");
  std::filesystem::permissions(folder_ / "bin/odd", std::filesystem::perms::owner_all);
  EXPECT_EQ(platform::startDetached({"odd"}, ""), ENOEXEC);
}

}  // namespace
