// Plays a crowd of processes, for storms. It is started under the name "llama-server", and
// what it forks says in its title whether it is a model server or nothing of interest.
//
//   crowd_program [OPTION N]... ROOM
//
//   --living N     N processes that sleep; each tenth is a model server
//   --births N     N are born a second, each a model server that lives for up to 0.2 s
//   --titles N     N model servers that rewrite their titles 1,000 times a second
//   --users N      N model servers, each of another user
//   --zombies N    N that have ended and are not waited for
//   --stopped N    N stopped model servers
//   --traced N     N model servers that a debugger holds
//   --sleeping N   N model servers in uninterruptible sleep
//   --foreign N    N model servers, each in a user namespace of its own
//
// ROOM is what titles are written over. It prints "steady PID" for every process that has to
// be in the list as long as the crowd is there, and "ready". When its standard input ends it
// ends them all, and prints "lost N": how many of the steady ones somebody else had ended.
#include <fcntl.h>
#include <grp.h>
#include <poll.h>
#include <sched.h>
#include <sys/prctl.h>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;
constexpr uid_t kFirstUser = 61000;  // users that own nothing else

[[noreturn]] void fail(const char* what) {
  std::perror(what);
  std::exit(1);
}

void require(bool done, const char* what) {
  if (!done) fail(what);
}

char* room = nullptr;  // where the arguments stand
std::size_t roomSize = 0;

void setTitle(const std::string& title) {
  const std::size_t length = std::min(title.size(), roomSize - 1);
  std::memcpy(room, title.data(), length);
  std::memset(room + length, 0, roomSize - length);
}

std::string serverTitle(int number) {
  return "llama-server --model /models/soak-" + std::to_string(number) + ".gguf";
}

void pauseForEver() {
  for (;;) pause();
}

/// Forks a process that does `work`. It ends with this one, whatever happens to that.
template <typename Work>
pid_t start(Work work) {
  const pid_t parent = getpid();
  const pid_t child = fork();
  require(child >= 0, "fork");
  if (child != 0) return child;
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  if (getppid() != parent) _exit(0);
  work();
  _exit(0);
}

/// As start(), and waits until `work` says that it is ready.
template <typename Work>
pid_t startAndWait(Work work) {
  int ready[2];
  require(pipe2(ready, O_CLOEXEC) == 0, "pipe2");
  const pid_t child = start([&] { work([&] { (void)!write(ready[1], "", 1); }); });
  close(ready[1]);
  char byte = 0;
  const bool isReady = read(ready[0], &byte, 1) == 1;
  close(ready[0]);
  require(isReady, "a process of the crowd");
  return child;
}

void rewriteTitles(int number) {
  std::string shorter = serverTitle(number);
  const std::string longer = shorter + " --ctx-size 8192 --threads 8 --alias " + shorter;
  // Blanks, not NULs: who reads it half written would find a gap, and behind it other arguments.
  shorter.resize(longer.size(), ' ');
  for (unsigned turn = 0;; ++turn) {
    setTitle(turn % 2 == 0 ? longer : shorter);
    usleep(1000);
  }
}

/// Where a process waits for its vforked child it takes no signal but SIGKILL.
void sleepUninterruptibly() {
  if (vfork() == 0) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    pauseForEver();
  }
}

void becomeUser(uid_t user) {
  require(setgroups(0, nullptr) == 0 && setgid(user) == 0 && setuid(user) == 0, "--users");
  prctl(PR_SET_PDEATHSIG, SIGKILL);  // changing the user forgot it
  prctl(PR_SET_DUMPABLE, 1);
}

void debug(pid_t pid) {
  require(ptrace(PTRACE_SEIZE, pid, nullptr, nullptr) == 0, "PTRACE_SEIZE");
  require(ptrace(PTRACE_INTERRUPT, pid, nullptr, nullptr) == 0, "PTRACE_INTERRUPT");
  require(waitpid(pid, nullptr, __WALL) == pid, "waitpid");
}

class Crowd {
 public:
  void add(std::string_view option, int count) {
    if (option == "--births") {
      births_ = count;
      return;
    }
    for (int i = 0; i < count; ++i) addOne(option, ++number_);
  }

  void report() const {
    for (const pid_t pid : steady_) std::printf("steady %d\n", pid);
    std::puts("ready");
    std::fflush(stdout);
  }

  /// Until standard input ends.
  void live() {
    const auto begin = Clock::now();
    std::int64_t born = 0;
    for (;;) {
      pollfd end{STDIN_FILENO, POLLIN, 0};
      if (poll(&end, 1, births_ > 0 ? 2 : -1) > 0) return;
      const std::chrono::duration<double> past = Clock::now() - begin;
      for (; static_cast<double>(born) < past.count() * births_; ++born) giveBirth();
      reapBorn();
    }
  }

  void end() {
    int lost = 0;
    for (const pid_t pid : steady_) {
      siginfo_t info = {};
      if (waitid(P_PID, static_cast<id_t>(pid), &info, WEXITED | WNOHANG | WNOWAIT) != 0 ||
          info.si_pid != 0) {
        ++lost;
      }
    }
    for (const pid_t pid : all_) kill(pid, SIGKILL);
    for (const pid_t pid : all_) waitpid(pid, nullptr, __WALL);
    while (!born_.empty()) {
      reapBorn();
      usleep(1000);
    }
    std::printf("lost %d\n", lost);
  }

 private:
  void addOne(std::string_view option, int number) {
    const bool isServer = option != "--living" || number % 10 == 0;
    setTitle(isServer ? serverTitle(number) : "worker " + std::to_string(number));
    const pid_t pid = startOne(option, number);
    all_.push_back(pid);
    if (isServer && option != "--zombies") steady_.push_back(pid);
  }

  static pid_t startOne(std::string_view option, int number) {
    if (option == "--living") return start(pauseForEver);
    if (option == "--titles") return start([number] { rewriteTitles(number); });
    if (option == "--zombies") {
      const pid_t pid = start([] {});
      siginfo_t info = {};
      waitid(P_PID, static_cast<id_t>(pid), &info, WEXITED | WNOWAIT);
      return pid;
    }
    if (option == "--stopped") {
      const pid_t pid = start([] {
        raise(SIGSTOP);
        pauseForEver();
      });
      waitpid(pid, nullptr, WUNTRACED);
      return pid;
    }
    if (option == "--traced") {
      const pid_t pid = start(pauseForEver);
      debug(pid);
      return pid;
    }
    if (option == "--sleeping") return start(sleepUninterruptibly);
    if (option == "--users") {
      return startAndWait([number](auto ready) {
        becomeUser(kFirstUser + static_cast<uid_t>(number));
        ready();
        pauseForEver();
      });
    }
    if (option == "--foreign") {
      return startAndWait([](auto ready) {
        require(unshare(CLONE_NEWUSER) == 0, "CLONE_NEWUSER");
        ready();
        pauseForEver();
      });
    }
    std::fprintf(stderr, "crowd_program: %s?\n", std::string(option).c_str());
    std::exit(2);
  }

  void giveBirth() {
    constexpr int kLifetimes = 200;  // milliseconds
    const int lifetime = 1 + static_cast<int>(++number_ * 7919LL % kLifetimes);
    setTitle(serverTitle(number_));
    born_.push_back(start([lifetime] { usleep(static_cast<useconds_t>(lifetime) * 1000); }));
  }

  void reapBorn() {
    std::erase_if(born_, [](pid_t pid) { return waitpid(pid, nullptr, WNOHANG) == pid; });
  }

  int number_ = 0;
  int births_ = 0;
  std::vector<pid_t> steady_;
  std::vector<pid_t> all_;
  std::vector<pid_t> born_;
};

}  // namespace

int main(int argc, char** argv) {
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  std::vector<std::pair<std::string, int>> options;
  for (int i = 1; i + 2 < argc; i += 2) options.emplace_back(argv[i], std::atoi(argv[i + 1]));
  room = argv[0];
  roomSize = static_cast<std::size_t>(argv[argc - 1] + std::strlen(argv[argc - 1]) - room);

  Crowd crowd;
  for (const auto& [option, count] : options) crowd.add(option, count);
  setTitle("crowd");
  crowd.report();
  crowd.live();
  crowd.end();
}
