#include "platform/linux/user_bus.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <utility>

#include "platform/linux/user_bus_socket.h"

namespace platform {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::uint64_t kForever = UINT64_MAX;

BusFailure failureOf(int error) {
  return {error, "", ""};
}

std::uint64_t microsecondsUntil(Deadline deadline) {
  const auto left = std::chrono::ceil<std::chrono::microseconds>(deadline - Clock::now());
  return static_cast<std::uint64_t>(std::max<std::int64_t>(left.count(), 0));
}

/// Gives a new sd_bus its socket and starts it.
int start(sd_bus* bus, FileDescriptor socket) {
  if (const int error = sd_bus_set_fd(bus, socket.get(), socket.get()); error < 0) return error;
  socket.release();  // now owned by `bus`
  sd_bus_set_bus_client(bus, 1);
  sd_bus_negotiate_fds(bus, 0);  // we don't want to be sent file descriptors
  // No time limit, not even for the greeting: a bus that does not answer is not a bus that is
  // gone.
  sd_bus_set_method_call_timeout(bus, kForever);
  return sd_bus_start(bus);
}

}  // namespace

BusCall::BusCall(UserBus& bus, BusMessage call) {
  sd_bus_slot* slot = nullptr;
  const int result =
      call ? sd_bus_call_async(bus.get(), &slot, call.get(), arrived, this, kForever) : -ENOMEM;
  if (result < 0) failure_ = failureOf(-result);
  slot_.reset(slot);
}

BusMessage BusCall::request(UserBus& bus, const char* destination, const char* path,
                            const char* interface, const char* member,
                            const std::function<int(sd_bus_message*)>& addArguments) {
  sd_bus_message* raw = nullptr;
  const int error =
      sd_bus_message_new_method_call(bus.get(), &raw, destination, path, interface, member);
  BusMessage call(raw);
  // Never start the manager by asking it: one that does not run has nothing loaded.
  if (error < 0 || sd_bus_message_set_auto_start(raw, 0) < 0 || addArguments(raw) < 0) {
    call.reset();
  }
  return call;
}

int BusCall::arrived(sd_bus_message* answer, void* self, sd_bus_error*) {
  auto& call = *static_cast<BusCall*>(self);
  call.answer_.reset(sd_bus_message_ref(answer));
  if (const sd_bus_error* error = sd_bus_message_get_error(answer)) {
    call.failure_ = {std::max(sd_bus_error_get_errno(error), 1), error->name,
                     error->message == nullptr ? "" : error->message};
  }
  return 1;
}

std::unique_ptr<UserBus> UserBus::open(const std::vector<std::string>& sockets,
                                       BusFailure& failure) {
  int error = 0;
  FileDescriptor socket = connectToUserBus(sockets, error);
  if (!socket.isOpen()) {
    failure = failureOf(error);
    return nullptr;
  }
  sd_bus* raw = nullptr;
  error = sd_bus_new(&raw);
  std::unique_ptr<UserBus> bus(new UserBus(raw));
  if (error >= 0) error = start(raw, std::move(socket));
  if (error >= 0) return bus;
  failure = failureOf(-error);
  return nullptr;
}

UserBus::Progress UserBus::waitUntil(const std::function<bool()>& isDone, Deadline deadline,
                                     BusFailure& failure) {
  return workOff(isDone, deadline, SIZE_MAX, true, failure);
}

UserBus::Progress UserBus::catchUp(const std::function<bool()>& isDone, BusFailure& failure,
                                   std::size_t most) {
  constexpr std::chrono::milliseconds kLongest(20);
  return workOff(isDone, Clock::now() + kLongest, most, false, failure);
}

UserBus::Progress UserBus::workOff(const std::function<bool()>& isDone, Deadline deadline,
                                   std::size_t most, bool waits, BusFailure& failure) {
  const auto lost = [&failure](int error) {
    failure = failureOf(error);
    return Progress::lost;
  };
  for (std::size_t pieces = 0;; ++pieces) {
    // Checked first, because calls that can't be sent any more are "answered" with the
    // connection's end.
    if (sd_bus_is_open(get()) <= 0) return lost(ECONNRESET);
    if (isDone()) return Progress::done;
    const std::uint64_t left = microsecondsUntil(deadline);
    if ((left == 0 && pieces > 0) || pieces >= most) return Progress::late;

    const int handled = sd_bus_process(get(), nullptr);
    if (handled < 0) return lost(-handled);
    if (handled > 0) continue;
    if (isDone()) return Progress::done;
    if (!waits) return Progress::late;
    const int woken = sd_bus_wait(get(), left);
    if (woken < 0 && woken != -EINTR) return lost(-woken);
  }
}

}  // namespace platform
