// Plays a process: with any arguments, executable, owner, title and memory. Tests start it
// and look at it from outside, as the program would look at the real one.
//
//   play_process [options] [--] [argv0 [argument...]]
//
//   --exe PATH        copy this program to PATH and run from there (the caller removes it)
//   --memory MIB      keep so much anonymous memory busy
//   --repeat N TEXT   append TEXT to the arguments N times
//   --title TEXT      write TEXT over the arguments, as setproctitle does
//   --pad nul|blank   what fills the arguments behind a shorter title (nul)
//   --user UID        run as that user and group (root only)
//   --ignore-term     ignore SIGTERM
//   --own-session     lead a session of its own
//   --non-dumpable    let no other process of the user look into this one
//   --end-first-thread  go on with another thread alone
//   --seconds N       end after so many seconds (a day)
//
// It prints "ready" and a line feed once all of that is done, and ends when the process
// that started it ends.
#include <fcntl.h>
#include <grp.h>
#include <pthread.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <unistd.h>

#include <climits>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace {

// The options travel to the played process in its environment: its arguments are the play's.
constexpr const char* kParent = "PLAY_PARENT";
constexpr const char* kMemory = "PLAY_MEMORY";
constexpr const char* kTitle = "PLAY_TITLE";
constexpr const char* kPad = "PLAY_PAD";
constexpr const char* kUser = "PLAY_USER";
constexpr const char* kIgnoreTerm = "PLAY_IGNORE_TERM";
constexpr const char* kNonDumpable = "PLAY_NON_DUMPABLE";
constexpr const char* kEndFirstThread = "PLAY_END_FIRST_THREAD";
constexpr const char* kSeconds = "PLAY_SECONDS";

[[noreturn]] void fail(const char* what) {
  std::perror(what);
  std::exit(2);
}

[[noreturn]] void failUsage(const std::string& what) {
  std::fprintf(stderr, "play_process: %s\n", what.c_str());
  std::exit(2);
}

void require(bool done, const char* what) {
  if (!done) fail(what);
}

std::string ownPath() {
  char path[PATH_MAX];
  const ssize_t length = readlink("/proc/self/exe", path, sizeof path);
  require(length > 0, "/proc/self/exe");
  return {path, static_cast<std::size_t>(length)};
}

void copyExecutable(const std::string& from, const std::string& to) {
  const int source = open(from.c_str(), O_RDONLY | O_CLOEXEC);
  const int target = open(to.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0755);
  struct stat status = {};
  require(source >= 0 && target >= 0 && fstat(source, &status) == 0, to.c_str());
  for (auto left = status.st_size; left > 0;) {
    const ssize_t sent = sendfile(target, source, nullptr, static_cast<std::size_t>(left));
    require(sent > 0, to.c_str());
    left -= sent;
  }
  require(fchmod(target, 0755) == 0 && close(target) == 0 && close(source) == 0, to.c_str());
}

/// A command line may take a quarter of the stack limit.
void allowLongCommandLines() {
  rlimit limit = {};
  require(getrlimit(RLIMIT_STACK, &limit) == 0, "getrlimit");
  constexpr rlim_t kEnough = 256UL << 20;
  limit.rlim_cur =
      limit.rlim_max == RLIM_INFINITY || limit.rlim_max > kEnough ? kEnough : limit.rlim_max;
  require(setrlimit(RLIMIT_STACK, &limit) == 0, "setrlimit");
}

[[noreturn]] void become(int argc, char** argv) {
  std::string executable = ownPath();
  std::vector<char*> arguments;
  std::vector<char*> repeated;

  int next = 1;
  const auto value = [&] {
    if (next >= argc) failUsage(std::string(argv[next - 1]) + " needs a value");
    return argv[next++];
  };
  const auto set = [](const char* name, const char* text) {
    require(setenv(name, text, 1) == 0, name);
  };
  while (next < argc && std::strncmp(argv[next], "--", 2) == 0) {
    const std::string_view option = argv[next++];
    if (option == "--") break;
    if (option == "--exe") {
      const std::string copy = value();
      copyExecutable(executable, copy);
      executable = copy;
    } else if (option == "--repeat") {
      const std::size_t count = std::strtoul(value(), nullptr, 10);
      repeated.insert(repeated.end(), count, value());
    } else if (option == "--memory") {
      set(kMemory, value());
    } else if (option == "--title") {
      set(kTitle, value());
    } else if (option == "--pad") {
      set(kPad, value());
    } else if (option == "--user") {
      set(kUser, value());
    } else if (option == "--seconds") {
      set(kSeconds, value());
    } else if (option == "--end-first-thread") {
      set(kEndFirstThread, "1");
    } else if (option == "--ignore-term") {
      set(kIgnoreTerm, "1");
    } else if (option == "--own-session") {
      require(setsid() >= 0, "--own-session");
    } else if (option == "--non-dumpable") {
      set(kNonDumpable, "1");
    } else {
      failUsage("unknown option " + std::string(option));
    }
  }
  arguments.assign(argv + next, argv + argc);
  if (arguments.empty()) arguments.push_back(executable.data());
  arguments.insert(arguments.end(), repeated.begin(), repeated.end());
  arguments.push_back(nullptr);

  set(kParent, std::to_string(getppid()).c_str());
  allowLongCommandLines();
  execv(executable.c_str(), arguments.data());
  fail(executable.c_str());
}

void keepBusy(std::size_t bytes) {
  if (bytes == 0) return;
  void* memory = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  require(memory != MAP_FAILED, "mmap");
  std::memset(memory, 0x5a, bytes);
}

/// The arguments and, right behind them, the environment: what a title may overwrite.
void writeTitle(int argc, char** argv, char** environment, std::string_view title, char pad) {
  char* const begin = argv[0];
  char* const argumentsEnd = argv[argc - 1] + std::strlen(argv[argc - 1]) + 1;
  char* end = argumentsEnd;
  for (; *environment != nullptr; ++environment) end = *environment + std::strlen(*environment) + 1;

  if (title.size() >= static_cast<std::size_t>(end - begin)) failUsage("the title is too long");
  std::memcpy(begin, title.data(), title.size());
  char* const titleEnd = begin + title.size();
  if (titleEnd < argumentsEnd) {
    std::memset(titleEnd, pad, static_cast<std::size_t>(argumentsEnd - titleEnd));
    argumentsEnd[-1] = '\0';
  } else {
    *titleEnd = '\0';
  }
}

long number(const char* variable, long otherwise) {
  const char* text = std::getenv(variable);
  return text == nullptr ? otherwise : std::strtol(text, nullptr, 10);
}

std::string text(const char* variable) {
  const char* value = std::getenv(variable);
  return value == nullptr ? "" : value;
}

[[noreturn]] void goOnWithoutFirstThread() {
  std::thread([first = pthread_self()] {
    pthread_join(first, nullptr);
    require(prctl(PR_SET_PDEATHSIG, SIGKILL) == 0, "parent's death");  // it is each thread's own
    if (getppid() != number(kParent, 0)) std::exit(2);
    std::puts("ready");
    std::fflush(stdout);
    for (;;) pause();
  }).detach();
  pthread_exit(nullptr);
}

[[noreturn]] void play(int argc, char** argv, char** environment) {
  if (const long user = number(kUser, -1); user >= 0) {
    const auto id = static_cast<uid_t>(user);
    require(setgroups(0, nullptr) == 0 && setgid(id) == 0 && setuid(id) == 0, "--user");
  }
  // A change of user clears both of these.
  require(prctl(PR_SET_DUMPABLE, std::getenv(kNonDumpable) == nullptr ? 1 : 0) == 0, "dumpable");
  require(prctl(PR_SET_PDEATHSIG, SIGKILL) == 0, "parent's death");
  if (getppid() != number(kParent, 0)) std::exit(2);  // it died before we asked

  if (std::getenv(kIgnoreTerm) != nullptr) std::signal(SIGTERM, SIG_IGN);
  // A minder that forgets it leaves nothing behind for good; soaks may take hours.
  alarm(static_cast<unsigned>(number(kSeconds, 24L * 60 * 60)));
  keepBusy(static_cast<std::size_t>(number(kMemory, 0)) << 20);
  const std::string title = text(kTitle);
  const char pad = text(kPad) == "blank" ? ' ' : '\0';
  if (!title.empty()) writeTitle(argc, argv, environment, title, pad);

  if (std::getenv(kEndFirstThread) != nullptr) goOnWithoutFirstThread();
  std::puts("ready");
  std::fflush(stdout);
  for (;;) pause();
}

}  // namespace

int main(int argc, char** argv, char** environment) {
  if (std::getenv(kParent) != nullptr) play(argc, argv, environment);
  become(argc, argv);
}
