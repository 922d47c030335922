#include "platform/linux/user_bus.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>

namespace platform {
namespace {

std::uint64_t microsecondsUntil(Deadline deadline) {
  const auto left = std::chrono::duration_cast<std::chrono::microseconds>(
      deadline - std::chrono::steady_clock::now());
  return static_cast<std::uint64_t>(std::max<std::int64_t>(left.count(), 0));
}

/// The deadline of one answer.
Deadline patient(Deadline deadline) {
  return std::min(deadline, std::chrono::steady_clock::now() + UserBus::kPatience);
}

/// A D-Bus error as sd-bus hands it out.
class BusError {
 public:
  BusError() = default;
  ~BusError() { sd_bus_error_free(&error_); }
  BusError(const BusError&) = delete;
  BusError& operator=(const BusError&) = delete;

  sd_bus_error* get() { return &error_; }
  const char* name() const { return error_.name == nullptr ? "" : error_.name; }
  const char* message() const { return error_.message; }

 private:
  sd_bus_error error_ = {};
};

void setFailure(int error, BusFailure& failure) {
  failure = {-error, "", std::strerror(-error)};
}

}  // namespace

bool UserBus::append(int result, BusFailure& failure) {
  if (result >= 0) return true;
  setFailure(result, failure);
  return false;
}

bool UserBus::lose(int error, BusFailure& failure) {
  setFailure(error, failure);
  bus_.reset();
  return false;
}

/// Takes in what has come meanwhile, above all the end of the connection.
bool UserBus::isAlive() {
  if (!bus_) return false;
  constexpr int kMost = 1000;  // a connection that is flooded is not worth keeping
  int handled = 0;
  while (handled < kMost) {
    const int result = sd_bus_process(bus_.get(), nullptr);
    if (result < 0) return false;
    if (result == 0) return sd_bus_is_ready(bus_.get()) > 0;
    ++handled;
  }
  return false;
}

bool UserBus::connect(Deadline deadline, BusFailure& failure) {
  if (isAlive()) return true;
  bus_.reset();
  sd_bus* opened = nullptr;
  if (const int error = sd_bus_open_user(&opened); error < 0) return lose(error, failure);
  bus_.reset(opened);
  deadline = patient(deadline);
  // sd_bus_call would wait without a bound for the other side to greet.
  while (sd_bus_is_ready(bus_.get()) == 0) {
    if (!processOne(deadline, failure)) return false;
  }
  return true;
}

bool UserBus::processOne(Deadline deadline, BusFailure& failure) {
  for (;;) {
    const int handled = bus_ ? sd_bus_process(bus_.get(), nullptr) : -ENOTCONN;
    if (handled > 0) return true;
    if (handled < 0) return lose(handled, failure);
    const std::uint64_t left = microsecondsUntil(deadline);
    if (left == 0) {
      setFailure(-ETIMEDOUT, failure);
      return false;
    }
    const int woken = sd_bus_wait(bus_.get(), left);
    if (woken < 0 && woken != -EINTR) return lose(woken, failure);
  }
}

BusMessage UserBus::newCall(const char* destination, const char* path, const char* interface,
                            const char* member, Deadline deadline, BusFailure& failure) {
  if (!connect(deadline, failure)) {
    bus_.reset();
    return none();
  }
  sd_bus_message* message = nullptr;
  const int error =
      sd_bus_message_new_method_call(bus_.get(), &message, destination, path, interface, member);
  if (!append(error, failure)) return none();
  BusMessage request(message, sd_bus_message_unref);
  return append(sd_bus_message_set_auto_start(message, 0), failure) ? std::move(request) : none();
}

BusMessage UserBus::send(BusMessage request, Deadline deadline, BusFailure& failure) {
  const std::uint64_t left = microsecondsUntil(patient(deadline));
  if (left == 0) {
    setFailure(-ETIMEDOUT, failure);
    return none();
  }
  BusError error;
  sd_bus_message* answer = nullptr;
  const int result = sd_bus_call(bus_.get(), request.get(), left, error.get(), &answer);
  if (result >= 0) return {answer, sd_bus_message_unref};

  setFailure(result, failure);
  failure.name = error.name();
  if (error.message() != nullptr) failure.text = error.message();
  // What did not answer in time may still answer, and nobody would wait for that any more.
  if (result == -ETIMEDOUT || sd_bus_is_open(bus_.get()) <= 0) bus_.reset();
  return none();
}

}  // namespace platform
