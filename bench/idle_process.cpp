// One process of the bench's population: it takes the memory, the owner and the command line
// that it is told to, says so, and sleeps until its parent ends it or dies.
//
// What it is told stands in its environment, because its arguments are part of the play:
//   BENCH_PARENT      the parent's pid
//   BENCH_OWNER       run as this user and group ("" : as the user who started it)
//   BENCH_MEMORY_KIB  keep so much memory of its own busy
//   BENCH_THREADS     sleep in so many threads
//   BENCH_SHARED      file descriptor whose content to map, as libraries are
//   BENCH_REWRITTEN   put blanks between the arguments, as browsers' helpers do ("" : don't)
//   BENCH_COPIES      start so many more processes like this one
//   BENCH_WAKES_MS    wake up each time so many milliseconds have passed ("" : sleep on)
//   BENCH_READY       file descriptor to write one byte to when all of that is done
#include <grp.h>
#include <pthread.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <cstring>
#include <ctime>

namespace {

[[noreturn]] void fail(const char* what) {
  const char* const parts[] = {"bench: idle process: ", what, " failed\n"};
  for (const char* part : parts) {
    if (write(STDERR_FILENO, part, std::strlen(part)) < 0) break;
  }
  _exit(2);
}

void require(bool done, const char* what) {
  if (!done) fail(what);
}

/// 0 when the variable is missing or empty.
long number(const char* variable) {
  const char* text = std::getenv(variable);
  return text == nullptr ? 0 : std::strtol(text, nullptr, 10);
}

void becomeOwner(long owner) {
  if (owner == 0) return;
  const auto id = static_cast<uid_t>(owner);
  require(setgroups(0, nullptr) == 0 && setgid(id) == 0 && setuid(id) == 0, "BENCH_OWNER");
  require(prctl(PR_SET_DUMPABLE, 1) == 0, "dumpable");  // the change of user cleared it
}

void dieWithParent(long parent) {
  require(prctl(PR_SET_PDEATHSIG, SIGKILL) == 0, "parent's death");
  if (getppid() != parent) _exit(0);  // it died before we asked
}

void keepBusy(std::size_t bytes) {
  if (bytes == 0) return;
  void* memory = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  require(memory != MAP_FAILED, "BENCH_MEMORY_KIB");
  std::memset(memory, 0x5a, bytes);
}

void* sleepOn(void*) {
  for (;;) pause();
}

/// At a time; 0: for good.
[[noreturn]] void sleepFor(long milliseconds) {
  constexpr long kInASecond = 1000;
  constexpr long kNanoseconds = 1'000'000;
  const timespec time = {.tv_sec = milliseconds / kInASecond,
                         .tv_nsec = milliseconds % kInASecond * kNanoseconds};
  for (;;) {
    if (milliseconds > 0) {
      nanosleep(&time, nullptr);
    } else {
      pause();
    }
  }
}

void startThreads(long count) {
  pthread_attr_t small;
  pthread_attr_init(&small);
  require(pthread_attr_setstacksize(&small, 16384) == 0, "stack size");
  for (long i = 1; i < count; ++i) {
    pthread_t thread;
    require(pthread_create(&thread, &small, sleepOn, nullptr) == 0, "BENCH_THREADS");
  }
}

/// They end with this process, as it does with its parent.
void startCopies(long count) {
  const pid_t self = getpid();
  for (long i = 0; i < count; ++i) {
    const pid_t copy = fork();
    require(copy >= 0, "BENCH_COPIES");
    if (copy != 0) continue;
    dieWithParent(self);
    for (;;) pause();
  }
}

void mapShared(int file) {
  struct stat status = {};
  require(fstat(file, &status) == 0, "BENCH_SHARED");
  const auto size = static_cast<std::size_t>(status.st_size);
  require(mmap(nullptr, size, PROT_READ, MAP_SHARED | MAP_POPULATE, file, 0) != MAP_FAILED,
          "BENCH_SHARED");
  close(file);
}

void rewriteTitle(int argc, char** argv) {
  for (int i = 0; i + 1 < argc; ++i) argv[i][std::strlen(argv[i])] = ' ';
}

}  // namespace

int main(int argc, char** argv) {
  becomeOwner(number("BENCH_OWNER"));
  dieWithParent(number("BENCH_PARENT"));
  keepBusy(static_cast<std::size_t>(number("BENCH_MEMORY_KIB")) << 10);
  startCopies(number("BENCH_COPIES"));
  startThreads(number("BENCH_THREADS"));
  mapShared(static_cast<int>(number("BENCH_SHARED")));
  const auto ready = static_cast<int>(number("BENCH_READY"));
  if (number("BENCH_REWRITTEN") != 0) rewriteTitle(argc, argv);
  require(write(ready, "", 1) == 1, "BENCH_READY");
  close(ready);
  sleepFor(number("BENCH_WAKES_MS"));
}
