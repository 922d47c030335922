#include "tools/scripted_manager.h"

#include <gtest/gtest.h>
#include <systemd/sd-bus.h>
#include <time.h>

#include <condition_variable>
#include <mutex>

namespace {

constexpr const char* kName = "org.freedesktop.systemd1";
constexpr const char* kPath = "/org/freedesktop/systemd1";
constexpr const char* kManager = "org.freedesktop.systemd1.Manager";
constexpr const char* kListedUnit = "(ssssssouso)";

sd_bus* connected(const std::string& address) {
  sd_bus* bus = nullptr;
  EXPECT_GE(sd_bus_new(&bus), 0);
  EXPECT_GE(sd_bus_set_address(bus, address.c_str()), 0);
  EXPECT_GE(sd_bus_set_bus_client(bus, 1), 0);
  EXPECT_GE(sd_bus_start(bus), 0);
  const char* name = nullptr;
  EXPECT_GE(sd_bus_get_unique_name(bus, &name), 0);
  return bus;
}

std::string objectOf(const std::string& unit) {
  char* path = nullptr;
  sd_bus_path_encode("/org/freedesktop/systemd1/unit", unit.c_str(), &path);
  std::string result = path;
  free(path);
  return result;
}

std::string jobObject(int number) {
  return "/org/freedesktop/systemd1/job/" + std::to_string(number);
}

/// To `receiver` alone, or to everybody.
void sayJobRemoved(sd_bus* bus, const std::string& job, const std::string& result,
                   const std::string& receiver) {
  sd_bus_message* signal = nullptr;
  ASSERT_GE(sd_bus_message_new_signal(bus, &signal, kPath, kManager, "JobRemoved"), 0);
  if (!receiver.empty()) sd_bus_message_set_destination(signal, receiver.c_str());
  sd_bus_message_append(signal, "uoss", 1, job.c_str(), "any.service", result.c_str());
  EXPECT_GE(sd_bus_send(bus, signal, nullptr), 0);
  sd_bus_message_unref(signal);
}

}  // namespace

struct ScriptedManager::Shared {
  std::mutex mutex;
  std::condition_variable isDone;
  const std::function<void()>* work = nullptr;
  bool ends = false;
};

ScriptedManager::ScriptedManager()
    : daemon_(std::make_unique<BackgroundProgram>(std::vector<std::string>{
          "dbus-daemon", "--session", "--nofork", "--nopidfile", "--print-address=1",
          "--address=unix:path=" + (folder_ / "bus").string()})),
      shared_(std::make_unique<Shared>()) {
  if (!daemon_->started()) {
    reason_ = "dbus-daemon is not installed";
    return;
  }
  const std::string address = daemon_->firstLine();
  EXPECT_NE(address, "");
  stranger_ = connected(address);
  manager_ = connected(address);
  const auto handler = [](sd_bus_message* call, void* self, sd_bus_error*) {
    std::uint8_t type = 0;
    sd_bus_message_get_type(call, &type);
    if (type != SD_BUS_MESSAGE_METHOD_CALL) return 0;
    static_cast<ScriptedManager*>(self)->answer(call);
    return 1;
  };
  EXPECT_GE(sd_bus_add_filter(manager_, nullptr, handler, this), 0);
  EXPECT_GE(sd_bus_request_name(manager_, kName, 0), 0);
  thread_ = std::thread([this] { loop(); });
}

ScriptedManager::~ScriptedManager() {
  if (thread_.joinable()) {
    {
      const std::lock_guard lock(shared_->mutex);
      shared_->ends = true;
    }
    thread_.join();
  }
  for (sd_bus_message* call : held_) sd_bus_message_unref(call);
  sd_bus_close_unref(manager_);
  sd_bus_close_unref(stranger_);
}

void ScriptedManager::loop() {
  constexpr std::uint64_t kLook = 2'000;  // microseconds
  for (;;) {
    {
      const std::lock_guard lock(shared_->mutex);
      if (shared_->ends) return;
      if (shared_->work != nullptr) {
        (*shared_->work)();
        shared_->work = nullptr;
        shared_->isDone.notify_all();
      }
    }
    if (manager_ != nullptr && sd_bus_process(manager_, nullptr) > 0) continue;
    if (manager_ != nullptr) {
      sd_bus_wait(manager_, kLook);
    } else {
      std::this_thread::sleep_for(std::chrono::microseconds(kLook));
    }
  }
}

void ScriptedManager::run(const std::function<void()>& work) {
  std::unique_lock lock(shared_->mutex);
  shared_->work = &work;
  shared_->isDone.wait(lock, [this] { return shared_->work == nullptr; });
}

void ScriptedManager::setUnit(const std::string& name, const Unit& unit) {
  run([&] { units_[name + ".service"] = unit; });
}

void ScriptedManager::hold(const std::string& member) {
  run([&] {
    holds_ = true;
    heldMember_ = member;
  });
}

void ScriptedManager::release() {
  run([&] {
    holds_ = false;
    for (sd_bus_message* call : held_) {
      answerTruly(call, sd_bus_message_get_member(call));
      sd_bus_message_unref(call);
    }
    held_.clear();
    sd_bus_flush(manager_);
  });
}

void ScriptedManager::refuseOrders(const std::string& error, const std::string& text) {
  run([&] {
    error_ = error;
    errorText_ = text;
  });
}

void ScriptedManager::talkNonsense() {
  run([&] { talksNonsense_ = true; });
}

void ScriptedManager::endJob(const std::string& result, const std::string& job) {
  run([&] {
    sayJobRemoved(manager_, job.empty() ? jobObject(jobs_) : job, result, "");
    sd_bus_flush(manager_);
  });
}

void ScriptedManager::endOtherJobs(int times) {
  run([&] {
    for (int i = 0; i < times; ++i) sayJobRemoved(manager_, jobObject(1'000'000 + i), "failed", "");
    sd_bus_flush(manager_);
  });
}

void ScriptedManager::endJobAsStranger(const std::string& result) {
  run([&] {
    sayJobRemoved(stranger_, jobObject(jobs_), result, client_);
    sd_bus_flush(stranger_);
  });
}

void ScriptedManager::goAsStranger() {
  run([&] {
    const char* own = nullptr;
    sd_bus_get_unique_name(manager_, &own);
    sd_bus_message* signal = nullptr;
    ASSERT_GE(sd_bus_message_new_signal(stranger_, &signal, "/org/freedesktop/DBus",
                                        "org.freedesktop.DBus", "NameOwnerChanged"),
              0);
    sd_bus_message_set_destination(signal, client_.c_str());
    sd_bus_message_append(signal, "sss", kName, own, "");
    EXPECT_GE(sd_bus_send(stranger_, signal, nullptr), 0);
    sd_bus_message_unref(signal);
    sd_bus_flush(stranger_);
  });
}

void ScriptedManager::disconnect() {
  run([&] {
    for (sd_bus_message* call : held_) sd_bus_message_unref(call);
    held_.clear();
    manager_ = sd_bus_flush_close_unref(manager_);
  });
}

std::vector<std::string> ScriptedManager::calls() {
  std::vector<std::string> result;
  run([&] { result = calls_; });
  return result;
}

std::uint64_t ScriptedManager::firstAskedForPid() {
  std::uint64_t result = 0;
  run([&] { result = firstAskedForPid_; });
  return result;
}

void ScriptedManager::answer(sd_bus_message* call) {
  const std::string member = sd_bus_message_get_member(call);
  const char* unit = nullptr;
  const bool isOrder = member == "StartUnit" || member == "StopUnit";
  if (isOrder) {
    sd_bus_message_read(call, "s", &unit);
    sd_bus_message_rewind(call, 1);
    client_ = sd_bus_message_get_sender(call);
    ++jobs_;
  }
  calls_.push_back(isOrder ? member + " " + unit : member);
  if (member == "Get" && firstAskedForPid_ == 0) {
    timespec now = {};
    clock_gettime(CLOCK_BOOTTIME, &now);
    firstAskedForPid_ = static_cast<std::uint64_t>(now.tv_sec) * 1'000'000'000U +
                        static_cast<std::uint64_t>(now.tv_nsec);
  }
  if (holds_ && (heldMember_.empty() || heldMember_ == member)) {
    held_.push_back(sd_bus_message_ref(call));
  } else {
    answerTruly(call, member);
  }
}

void ScriptedManager::answerTruly(sd_bus_message* call, const std::string& member) {
  const bool isOrder = member == "StartUnit" || member == "StopUnit";
  if (isOrder && !error_.empty()) {
    sd_bus_reply_method_errorf(call, error_.c_str(), "%s", errorText_.c_str());
    return;
  }
  if (talksNonsense_ && member != "Subscribe") {
    sd_bus_reply_method_return(call, "s", "nonsense");
    return;
  }
  sd_bus_message* reply = nullptr;
  ASSERT_GE(sd_bus_message_new_method_return(call, &reply), 0);
  if (isOrder) sd_bus_message_append(reply, "o", jobObject(jobs_).c_str());
  if (member == "ListUnitsByPatterns") appendUnits(reply, "");
  if (member == "ListUnitsByNames") {
    const char* unit = nullptr;
    sd_bus_message_enter_container(call, 'a', "s");
    sd_bus_message_read(call, "s", &unit);
    appendUnits(reply, unit);
  }
  if (member == "Get") {
    for (const auto& [name, unit] : units_) {
      if (objectOf(name) != sd_bus_message_get_path(call)) continue;
      sd_bus_message_append(reply, "v", "u", unit.pid);
    }
  }
  EXPECT_GE(sd_bus_send(sd_bus_message_get_bus(call), reply, nullptr), 0);
  sd_bus_message_unref(reply);
}

/// Those that are active; or of `only`, whether it is or not.
void ScriptedManager::appendUnits(sd_bus_message* reply, const std::string& only) const {
  sd_bus_message_open_container(reply, 'a', kListedUnit);
  for (const auto& [name, unit] : units_) {
    if (only.empty() ? unit.activeState == "inactive" : name != only) continue;
    sd_bus_message_append(reply, kListedUnit, name.c_str(), "", "loaded", unit.activeState.c_str(),
                          "", "", objectOf(name).c_str(), 0, "", "/");
  }
  sd_bus_message_close_container(reply);
}
