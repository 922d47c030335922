#include "population.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <set>
#include <span>
#include <stdexcept>
#include <string_view>

#include "tools/argument_pointers.h"

namespace bench {
namespace {

constexpr std::size_t kSharedSize = std::size_t{3} << 20;
constexpr int kFirstOtherOwner = 61000;  // users that own nothing else
std::span<char> ownArguments;

[[noreturn]] void fail(const char* what) {
  std::perror(what);
  _exit(1);
}

void require(bool done, const char* what) {
  if (!done) fail(what);
}

/// The folder of the executables: one file under all the names of the population.
std::string executableFolder() {
  return IDLE_PROCESS ".as";
}

void linkExecutables(const std::vector<IdleProcess>& plan) {
  std::set<std::string> names;
  for (const auto& process : plan) names.insert(process.executable);
  mkdir(executableFolder().c_str(), 0755);
  for (const auto& name : names) {
    const std::string path = executableFolder() + "/" + name;
    unlink(path.c_str());  // it may be of an earlier build
    require(link(IDLE_PROCESS, path.c_str()) == 0, path.c_str());
  }
}

/// What all processes map, as they would map libraries.
int sharedContent() {
  const int file = memfd_create("bench", 0);
  require(file >= 0 && ftruncate(file, kSharedSize) == 0, "memfd_create");
  void* content =
      mmap(nullptr, kSharedSize, PROT_WRITE | PROT_READ, MAP_SHARED | MAP_POPULATE, file, 0);
  require(content != MAP_FAILED, "mmap");
  munmap(content, kSharedSize);
  return file;
}

/// How many threads all processes may have together: half of what the system has pids for. A pid
/// namespace may say more than the namespace around it has.
int threadsThatFit() {
  constexpr rlim_t kUsualMost = 32768;
  rlimit limit = {};
  const bool isKnown = getrlimit(RLIMIT_NPROC, &limit) == 0;
  return static_cast<int>(std::min(isKnown ? limit.rlim_cur : kUsualMost, kUsualMost) / 2);
}

std::vector<IdleProcess> withThreadsThatFit(std::vector<IdleProcess> plan) {
  double all = 0;
  for (const auto& process : plan) all += process.threads;
  const double share = threadsThatFit() / all;
  if (share >= 1) return plan;
  for (auto& process : plan)
    process.threads = std::max(1, static_cast<int>(process.threads * share));
  return plan;
}

/// A command line may take a quarter of the stack limit.
void allowLongCommandLines() {
  rlimit limit = {};
  getrlimit(RLIMIT_STACK, &limit);
  limit.rlim_cur = limit.rlim_max;
  setrlimit(RLIMIT_STACK, &limit);
}

pid_t start(const IdleProcess& process, pid_t parent, int shared, int ready) {
  const std::string path = executableFolder() + "/" + process.executable;
  const bool ownUser = process.owner == 0 || geteuid() != 0;
  std::vector<std::string> told{
      "BENCH_PARENT=" + std::to_string(parent),
      "BENCH_OWNER=" + (ownUser ? "" : std::to_string(kFirstOtherOwner + process.owner)),
      "BENCH_MEMORY_KIB=" + std::to_string(process.memoryKiB),
      "BENCH_THREADS=" + std::to_string(process.threads),
      "BENCH_SHARED=" + std::to_string(shared),
      "BENCH_REWRITTEN=" + std::string(process.rewritten ? "1" : ""),
      "BENCH_COPIES=" + std::to_string(process.copies),
      "BENCH_WAKES_MS=" + std::to_string(process.wakesMs),
      "BENCH_READY=" + std::to_string(ready),
  };
  std::vector<std::string> arguments = process.arguments;

  pid_t child = 0;
  errno = posix_spawn(&child, path.c_str(), nullptr, nullptr, argumentPointers(arguments).data(),
                      argumentPointers(told).data());
  require(errno == 0, path.c_str());
  return child;
}

/// False when nobody is left who could write one.
bool awaitByte(int pipe) {
  char byte = 0;
  ssize_t length = 0;
  do {
    length = read(pipe, &byte, 1);
  } while (length < 0 && errno == EINTR);
  return length == 1;
}

/// The minder's command line becomes "init": who started all is no part of what it started, as on
/// a real machine.
void standForTheFirstProcess() {
  constexpr std::string_view kName = "init";
  if (ownArguments.size() <= kName.size()) return;
  std::ranges::fill(ownArguments, '\0');
  std::ranges::copy(kName, ownArguments.begin());
}

/// Starts the population, says so, and ends it when `hold` has no other end any more.
[[noreturn]] void mind(const std::vector<IdleProcess>& plan, pid_t bench, int hold, int started) {
  require(setpgid(0, 0) == 0, "setpgid");
  standForTheFirstProcess();
  require(prctl(PR_SET_PDEATHSIG, SIGKILL) == 0, "prctl");
  if (getppid() != bench) _exit(0);
  allowLongCommandLines();

  int ready[2];
  require(pipe(ready) == 0, "pipe");
  fcntl(ready[0], F_SETFD, FD_CLOEXEC);
  const int shared = sharedContent();
  const pid_t self = getpid();
  std::vector<pid_t> children;
  children.reserve(plan.size());
  for (const auto& process : plan) children.push_back(start(process, self, shared, ready[1]));
  close(ready[1]);
  for (std::size_t i = 0; i < children.size(); ++i) {
    if (!awaitByte(ready[0])) _exit(1);
  }

  require(write(started, "", 1) == 1, "write");
  char byte = 0;
  while (read(hold, &byte, 1) < 0 && errno == EINTR) {
  }
  for (const pid_t child : children) kill(child, SIGKILL);
  for (const pid_t child : children) waitpid(child, nullptr, 0);
  _exit(0);
}

}  // namespace

void rememberArguments(int argc, char** argv) {
  const char* const end = argv[argc - 1] + std::strlen(argv[argc - 1]) + 1;
  ownArguments = {argv[0], static_cast<std::size_t>(end - argv[0])};
}

Population::Population(const std::vector<IdleProcess>& plan) {
  linkExecutables(plan);
  int hold[2];
  int started[2];
  require(pipe2(hold, O_CLOEXEC) == 0 && pipe2(started, O_CLOEXEC) == 0, "pipe2");
  std::fflush(nullptr);
  const pid_t bench = getpid();
  minder_ = fork();
  require(minder_ >= 0, "fork");
  if (minder_ == 0) {
    close(hold[1]);
    close(started[0]);
    mind(withThreadsThatFit(plan), bench, hold[0], started[1]);
  }
  close(hold[0]);
  close(started[1]);
  hold_ = hold[1];
  const bool isStarted = awaitByte(started[0]);
  close(started[0]);
  if (isStarted) return;
  end();
  throw std::runtime_error("the processes can't be started");
}

Population::~Population() {
  end();
}

void Population::end() {
  close(hold_);
  waitpid(minder_, nullptr, 0);
}

}  // namespace bench
