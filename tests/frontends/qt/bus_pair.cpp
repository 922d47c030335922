#include "frontends/qt/bus_pair.h"

#include <gtest/gtest.h>
#include <sys/socket.h>

#include <chrono>

namespace {

BusPtr connectEnd(int fd, bool isServer) {
  sd_bus* bus = nullptr;
  EXPECT_GE(sd_bus_new(&bus), 0);
  BusPtr end(bus);
  EXPECT_GE(sd_bus_set_fd(bus, fd, fd), 0);
  if (isServer) {
    sd_id128_t id = {};
    EXPECT_GE(sd_id128_randomize(&id), 0);
    EXPECT_GE(sd_bus_set_server(bus, 1, id), 0);
  }
  EXPECT_GE(sd_bus_start(bus), 0);
  return end;
}

}  // namespace

BusPair::BusPair() {
  int ends[2];
  EXPECT_EQ(socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, ends), 0);
  served_ = connectEnd(ends[0], true);
  caller_ = connectEnd(ends[1], false);
  sd_bus_slot* raw = nullptr;
  sd_bus_add_filter(caller(), &raw, &BusPair::heard, this);
  filter_.reset(raw);
  while (sd_bus_is_ready(served()) <= 0 || sd_bus_is_ready(caller()) <= 0) processBoth();
}

int BusPair::heard(sd_bus_message* message, void* self, sd_bus_error*) {
  std::uint8_t type = 0;
  sd_bus_message_get_type(message, &type);
  if (type == SD_BUS_MESSAGE_SIGNAL) {
    static_cast<BusPair*>(self)->signals_.emplace_back(sd_bus_message_ref(message));
  }
  return 0;
}

bool BusPair::processBoth() const {
  const int served = sd_bus_process(served_.get(), nullptr);
  const int called = sd_bus_process(caller_.get(), nullptr);
  return served > 0 || called > 0;
}

BusMessage BusPair::newCall(const char* path, const char* interface, const char* member) const {
  sd_bus_message* call = nullptr;
  EXPECT_GE(sd_bus_message_new_method_call(caller(), &call, nullptr, path, interface, member), 0);
  return BusMessage(call);
}

BusMessage BusPair::send(const BusMessage& call) const {
  BusMessage answer;
  const auto arrived = [](sd_bus_message* reply, void* data, sd_bus_error*) {
    static_cast<BusMessage*>(data)->reset(sd_bus_message_ref(reply));
    return 0;
  };
  sd_bus_slot* raw = nullptr;
  EXPECT_GE(sd_bus_call_async(caller(), &raw, call.get(), arrived, &answer, 0), 0);
  const BusSlot slot(raw);
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(60);
  while (!answer && std::chrono::steady_clock::now() < deadline) processBoth();
  return answer;
}

std::vector<std::string> BusPair::takeSignals() {
  while (processBoth()) {
  }
  std::vector<std::string> members;
  for (const BusMessage& signal : signals_) {
    members.emplace_back(sd_bus_message_get_member(signal.get()));
  }
  signals_.clear();
  return members;
}

sd_bus_message* BusPair::lastSignal(const std::string& member) const {
  while (processBoth()) {
  }
  for (auto signal = signals_.rbegin(); signal != signals_.rend(); ++signal) {
    if (sd_bus_message_get_member(signal->get()) == member) return signal->get();
  }
  return nullptr;
}
