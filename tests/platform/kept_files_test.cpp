// What is read from a file that was kept open is what a file opened now would say.
#include "platform/linux/kept_files.h"

#include <gtest/gtest.h>
#include <linux/sched.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <random>
#include <sstream>
#include <string>

#include "platform/linux/process_reader.h"
#include "tools/child_process.h"
#include "tools/forked.h"
#include "tools/temp_folder.h"

namespace {

using platform::FileReader;
using platform::KeptFiles;
using platform::ProcessFacts;

std::ptrdiff_t openFiles() {
  const std::filesystem::directory_iterator files("/proc/self/fd");
  return std::distance(begin(files), end(files));
}

/// A proc file system made of plain files, whose pids never change hands.
class KeptFilesTest : public testing::Test {
 protected:
  static constexpr std::uint32_t kOwner = 1000;

  void SetUp() override {
    for (const char* pid : {"1", "2", "3"}) folder_.write(std::string(pid) + "/cmdline", "old");
  }
  /// Puts another file in the place of the one that may be open.
  void replace(const std::string& name) {
    std::filesystem::remove(folder_ / name);
    folder_.write(name, "new");
  }

  TempFolder folder_;
  platform::ProcFs proc_{folder_.path().c_str()};
  FileReader reader_{100};
};

TEST_F(KeptFilesTest, ReadsAgainFromTheSameFile) {
  KeptFiles files(proc_, "cmdline", 10);
  EXPECT_EQ(files.read(2, kOwner, reader_), "old");
  const auto open = openFiles();
  replace("2/cmdline");
  EXPECT_EQ(files.read(2, kOwner, reader_), "old");
  EXPECT_EQ(openFiles(), open);
}

TEST_F(KeptFilesTest, OpensAnewForAnotherOwner) {
  KeptFiles files(proc_, "cmdline", 10);
  files.read(2, kOwner, reader_);
  replace("2/cmdline");
  EXPECT_EQ(files.read(2, kOwner + 1, reader_), "new");
}

TEST_F(KeptFilesTest, ClosesTheFilesOfProcessesThatAreGone) {
  KeptFiles files(proc_, "cmdline", 10);
  const auto before = openFiles();
  for (const int pid : {3, 1, 2}) files.read(pid, kOwner, reader_);
  EXPECT_EQ(openFiles(), before + 3);
  files.keepOnly({1, 3});
  EXPECT_EQ(openFiles(), before + 2);
  replace("2/cmdline");
  EXPECT_EQ(files.read(2, kOwner, reader_), "new");
}

TEST_F(KeptFilesTest, KeepsNoMoreThanItMay) {
  KeptFiles files(proc_, "cmdline", 2);
  const auto before = openFiles();
  for (int round = 0; round < 2; ++round) {
    for (const int pid : {1, 2, 3}) EXPECT_EQ(files.read(pid, kOwner, reader_), "old");
  }
  EXPECT_EQ(openFiles(), before + 2);
}

TEST_F(KeptFilesTest, KeepsNothingOfWhatIsNotThere) {
  KeptFiles files(proc_, "cmdline", 10);
  EXPECT_FALSE(files.read(4, kOwner, reader_));
  folder_.write("4/cmdline", "late");
  EXPECT_EQ(files.read(4, kOwner, reader_), "late");
}

TEST(FilesToKeep, LeavesHalfOfTheDescriptors) {
  EXPECT_EQ(resultOfForked([] {
              rlimit limit = {};
              getrlimit(RLIMIT_NOFILE, &limit);
              limit.rlim_cur = 64;
              setrlimit(RLIMIT_NOFILE, &limit);
              return static_cast<int>(platform::filesToKeep());
            }),
            32);
}

/// Writes a title over this process's arguments, as setproctitle does.
void rewriteTitle(const std::string& title) {
  std::ifstream file("/proc/self/stat");
  std::string stat(std::istreambuf_iterator<char>(file), {});
  std::istringstream fields(stat.substr(stat.rfind(')') + 2));
  std::string field;
  constexpr int kArgumentsStart = 48;
  constexpr int kFirst = 3;
  for (int i = kFirst; i < kArgumentsStart; ++i) fields >> field;
  std::uintptr_t begin = 0;
  std::uintptr_t end = 0;
  fields >> begin >> end;
  auto* const arguments = reinterpret_cast<char*>(begin);
  const std::size_t size = end - begin;
  std::memset(arguments, 0, size);
  std::memcpy(arguments, title.data(), std::min(title.size(), size - 1));
}

/// fork() into a process with that pid; -1 where that is not allowed.
pid_t forkAs(pid_t pid) {
  clone_args arguments{};
  arguments.exit_signal = SIGCHLD;
  arguments.set_tid = reinterpret_cast<std::uintptr_t>(&pid);
  arguments.set_tid_size = 1;
  return static_cast<pid_t>(syscall(SYS_clone3, &arguments, sizeof arguments));
}

/// A process that does what it is told. It begins as a copy of the test program.
class Puppet {
 public:
  enum class Order : char { rewriteTitle, execute, changeOwner };

  /// `pid`: the pid that it shall have; 0 for any.
  explicit Puppet(pid_t pid = 0) {
    if (pipe(orders_) != 0 || pipe(answers_) != 0) return;
    pid_ = pid == 0 ? fork() : forkAs(pid);
    if (pid_ == 0) obey();
    close(orders_[0]);
    close(answers_[1]);
  }
  ~Puppet() {
    end();
    close(orders_[1]);
    close(answers_[0]);
  }
  Puppet(const Puppet&) = delete;
  Puppet& operator=(const Puppet&) = delete;

  pid_t pid() const { return pid_; }

  void tell(Order order) {
    ASSERT_GT(pid_, 0);
    ASSERT_EQ(write(orders_[1], &order, 1), 1);
    char answer[6];
    ASSERT_GT(read(answers_[0], answer, sizeof answer), 0);
  }

  /// Leaves it a zombie.
  void die() {
    if (pid_ < 1) return;
    kill(pid_, SIGKILL);
    siginfo_t info = {};
    waitid(P_PID, static_cast<id_t>(pid_), &info, WEXITED | WNOWAIT);
  }

  void end() {
    if (pid_ < 1) return;
    die();
    waitpid(pid_, nullptr, 0);
    pid_ = -1;
  }

 private:
  [[noreturn]] void obey() {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    dup2(answers_[1], STDOUT_FILENO);
    Order order{};
    while (read(orders_[0], &order, 1) == 1) {
      switch (order) {
        case Order::rewriteTitle:
          rewriteTitle("puppet: no " + std::to_string(++titles_));
          break;
        case Order::execute:
          execute();
          break;
        case Order::changeOwner:
          becomeStranger();
          prctl(PR_SET_PDEATHSIG, SIGKILL);
          break;
      }
      if (write(STDOUT_FILENO, "done\n", 5) != 5) break;
    }
    _exit(0);
  }

  /// From then on it says "ready" and takes no more orders.
  static void execute() {
    auto command = playProcess({}, {"executed", "--with", "other arguments"});
    std::vector<char*> arguments;
    for (auto& argument : command) arguments.push_back(argument.data());
    arguments.push_back(nullptr);
    execv(arguments[0], arguments.data());
  }

  int orders_[2] = {-1, -1};
  int answers_[2] = {-1, -1};
  int titles_ = 0;
  pid_t pid_ = -1;
};

/// A reader that has seen every process before, beside one that sees it for the first time.
class FreshReadTest : public testing::Test {
 protected:
  void expectAsFresh(pid_t pid) {
    platform::ProcessReader fresh(platform::systemProc());
    ProcessFacts expected;
    const bool isThere = fresh.read(pid, expected);
    ASSERT_EQ(reader_.read(pid, facts_), isThere) << pid;
    if (!isThere) return;
    EXPECT_EQ(facts_.name, expected.name);
    EXPECT_EQ(facts_.commandLine, expected.commandLine);
    EXPECT_EQ(facts_.arguments, expected.arguments);
    EXPECT_EQ(facts_.effectiveUid, expected.effectiveUid);
  }

  platform::ProcessReader reader_{platform::systemProc()};
  ProcessFacts facts_;
};

TEST_F(FreshReadTest, SeesARewrittenTitle) {
  Puppet puppet;
  expectAsFresh(puppet.pid());
  for (const char* title : {"puppet: no 1", "puppet: no 2"}) {
    puppet.tell(Puppet::Order::rewriteTitle);
    expectAsFresh(puppet.pid());
    EXPECT_EQ(facts_.commandLine, title);
  }
}

TEST_F(FreshReadTest, SeesAnotherProgram) {
  Puppet puppet;
  expectAsFresh(puppet.pid());
  puppet.tell(Puppet::Order::execute);
  expectAsFresh(puppet.pid());
  EXPECT_EQ(facts_.commandLine, "executed --with other arguments");
}

TEST_F(FreshReadTest, SeesAnotherOwner) {
  if (geteuid() != 0) GTEST_SKIP() << "only root can change to another user";
  Puppet puppet;
  expectAsFresh(puppet.pid());
  puppet.tell(Puppet::Order::changeOwner);
  expectAsFresh(puppet.pid());
  EXPECT_EQ(facts_.effectiveUid, kStranger);
}

TEST_F(FreshReadTest, SeesTheEnd) {
  Puppet puppet;
  const pid_t pid = puppet.pid();
  expectAsFresh(pid);
  puppet.die();
  expectAsFresh(pid);
  puppet.end();
  expectAsFresh(pid);
}

TEST_F(FreshReadTest, SeesTheNextOwnerOfThePid) {
  auto first = std::make_unique<Puppet>();
  const pid_t pid = first->pid();
  first->tell(Puppet::Order::rewriteTitle);
  expectAsFresh(pid);
  first.reset();
  Puppet second(pid);
  if (second.pid() != pid) GTEST_SKIP() << "may not choose a process's pid here";
  expectAsFresh(pid);
  EXPECT_NE(facts_.commandLine, "puppet: no 1");
  second.tell(Puppet::Order::execute);
  expectAsFresh(pid);
}

TEST_F(FreshReadTest, HoldsWhileProcessesComeAndGo) {
  std::mt19937 random(1);
  std::vector<std::unique_ptr<Puppet>> puppets;
  std::vector<pid_t> everSeen;
  for (int round = 0; round < 40; ++round) {
    for (int i = 0; i < 3; ++i) {
      puppets.push_back(std::make_unique<Puppet>());
      everSeen.push_back(puppets.back()->pid());
    }
    for (const auto& puppet : puppets) {
      if (random() % 4 == 0) puppet->tell(Puppet::Order::rewriteTitle);
    }
    puppets[random() % puppets.size()]->tell(Puppet::Order::execute);
    if (round % 2 == 0) reader_.pids();
    for (const pid_t pid : everSeen) expectAsFresh(pid);
    // Those that were executed take no more orders; a third of the others go as well.
    std::erase_if(puppets, [&](const auto& puppet) {
      ProcessFacts facts;
      return !reader_.read(puppet->pid(), facts) || facts.name == "executed" || random() % 3 == 0;
    });
  }
}

}  // namespace
