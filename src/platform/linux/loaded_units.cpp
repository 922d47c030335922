#include "platform/linux/loaded_units.h"

#include <cerrno>

namespace platform {

using Clock = std::chrono::steady_clock;

std::optional<LaunchAgentAnswer> LoadedUnits::read(std::span<const LaunchAgentFile> files) {
  if (files.empty()) return LaunchAgentAnswer{};
  inquire(files, Clock::now() + options_.budget);
  if (!last_) return std::nullopt;
  return LaunchAgentAnswer{last_->launchAgentsOf(files), last_->askedAt};
}

void LoadedUnits::inquire(std::span<const LaunchAgentFile> files, Deadline deadline) {
  BusFailure failure;
  const auto isOver = [&] { return inquiry_->carryOn(files); };
  if (Clock::now() < restsUntil_) {
    if (!inquiry_) return;
    const auto progress = bus_->catchUp(isOver, failure);
    if (progress == UserBus::Progress::done) takeAnswer();
    if (progress != UserBus::Progress::lost) return;
    // The connection is lost, so the manager was not slow but has gone; a new one may answer at
    // once.
    restsUntil_ = {};
  }
  if (inquiry_) disconnect();  // it was never answered

  // A kept connection may have been lost without our noticing: if it fails, try once with a new
  // one.
  for (bool isKept = bus_ != nullptr;; isKept = false) {
    if (!connect()) return;
    inquiry_.emplace(*bus_);
    switch (bus_->waitUntil(isOver, deadline, failure)) {
      case UserBus::Progress::done:
        return takeAnswer();
      case UserBus::Progress::late:
        return restAWhile();
      case UserBus::Progress::lost:
        disconnect();
    }
    if (!isKept) return last_.reset();
  }
}

/// False when there is no manager to ask.
bool LoadedUnits::connect() {
  if (bus_) return true;
  BusFailure failure;
  bus_ = UserBus::open(options_.sockets(), failure);
  if (bus_) return true;
  if (failure.number == EAGAIN) {
    restAWhile();
  } else {
    last_.reset();
  }
  return false;
}

void LoadedUnits::takeAnswer() {
  last_ = inquiry_->takeAnswer();
  inquiry_.reset();
}

void LoadedUnits::restAWhile() {
  restsUntil_ = Clock::now() + options_.rest;
}

void LoadedUnits::disconnect() {
  inquiry_.reset();
  bus_.reset();
}

}  // namespace platform
