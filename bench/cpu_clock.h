#pragma once

#include <sys/types.h>

#include <ctime>

namespace bench {

/// User and system time, in seconds, that the calling process has used so far.
inline double cpuSeconds() {
  timespec time = {};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

/// The same of another process, with all its threads; 0 when it is gone.
inline double cpuSecondsOf(pid_t pid) {
  clockid_t clock = 0;
  timespec time = {};
  if (clock_getcpuclockid(pid, &clock) != 0 || clock_gettime(clock, &time) != 0) return 0;
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

/// The CPU time that the calling process spends in `work`, in seconds.
template <typename Work>
double cpuSecondsOfWork(Work&& work) {
  const double before = cpuSeconds();
  work();
  return cpuSeconds() - before;
}

}  // namespace bench
