#include "soak/pid_relay.h"

#include <gtest/gtest.h>
#include <time.h>
#include <unistd.h>

#include <utility>
#include <vector>

namespace {

/// No pid namespace of a test's own gets there by counting.
constexpr pid_t kPid = 30'000;

std::vector<std::string> modelServer(const std::string& name) {
  return {"llama-server", "-m", "/models/" + name + ".gguf"};
}

void waitForTickBegin() {
  constexpr long kTick = 10'000'000;  // nanoseconds; what the kernel tells is in hundredths
  timespec now = {};
  clock_gettime(CLOCK_BOOTTIME, &now);
  timespec left = {.tv_sec = 0, .tv_nsec = kTick - now.tv_nsec % kTick};
  nanosleep(&left, nullptr);
}

}  // namespace

std::string PidRelay::reason() {
  const IdleProcess attempt(kPid, {"attempt"}, IdleProcess::OnTerm::ends);
  return attempt.pid() == kPid ? "" : "no pid can be chosen here: that takes root and Linux 5.5";
}

void PidRelay::begin(bool atTickBegin) {
  successor_.reset();
  meant_.reset();
  const std::string round = std::to_string(++round_);
  names_ = {.pid = kPid, .meant = "meant" + round, .successor = "other" + round};
  if (atTickBegin) waitForTickBegin();
  using OnTerm = IdleProcess::OnTerm;
  meant_ = std::make_unique<IdleProcess>(kPid, modelServer(names_.meant),
                                         meantRemembers_ ? OnTerm::remembers : OnTerm::ends);
  EXPECT_EQ(meant_->pid(), kPid);
  meantStart_ = meant_->startTick();
}

void PidRelay::endMeant() {
  meant_.reset();
}

void PidRelay::startSuccessor() {
  successor_ = std::make_unique<IdleProcess>(kPid, modelServer(names_.successor),
                                             IdleProcess::OnTerm::remembers);
  EXPECT_EQ(successor_->pid(), kPid);
}
