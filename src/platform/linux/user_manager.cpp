#include "platform/linux/user_manager.h"

#include <cerrno>

namespace platform {
namespace {

constexpr const char* kService = "org.freedesktop.systemd1";
constexpr const char* kPath = "/org/freedesktop/systemd1";
constexpr const char* kManager = "org.freedesktop.systemd1.Manager";
constexpr const char* kUnit = "org.freedesktop.systemd1.Unit";
constexpr const char* kServiceUnit = "org.freedesktop.systemd1.Service";
constexpr const char* kNoSuchUnit = "org.freedesktop.systemd1.NoSuchUnit";

/// An answer that doesn't hold what it should is as good as none.
std::nullopt_t misunderstood(BusFailure& failure) {
  failure = {EBADMSG, "", "the service manager's answer makes no sense"};
  return std::nullopt;
}

/// The jobs that ended since this was made, by their D-Bus objects.
class FinishedJobs {
 public:
  /// Asks for the ends of jobs from now on. The bus handles what it is told in order, so this
  /// holds for every job that is asked for later.
  bool watch(sd_bus* bus) {
    return bus != nullptr && sd_bus_match_signal_async(bus, &slot_, kService, kPath, kManager,
                                                       "JobRemoved", note, nullptr, this) >= 0;
  }
  FinishedJobs() = default;
  ~FinishedJobs() { sd_bus_slot_unref(slot_); }
  FinishedJobs(const FinishedJobs&) = delete;
  FinishedJobs& operator=(const FinishedJobs&) = delete;

  std::optional<std::string> resultOf(const std::string& job) const {
    const auto found = results_.find(job);
    if (found == results_.end()) return std::nullopt;
    return found->second;
  }

 private:
  static int note(sd_bus_message* message, void* self, sd_bus_error*) {
    std::uint32_t id = 0;
    const char* job = nullptr;
    const char* unit = nullptr;
    const char* result = nullptr;
    if (sd_bus_message_read(message, "uoss", &id, &job, &unit, &result) > 0) {
      static_cast<FinishedJobs*>(self)->results_[job] = result;
    }
    return 0;
  }

  sd_bus_slot* slot_ = nullptr;
  std::map<std::string, std::string> results_;
};

}  // namespace

std::optional<std::map<std::string, std::string, std::less<>>> UserManager::loadedServices(
    Deadline deadline, BusFailure& failure) {
  const BusMessage answer =
      bus_.call(kService, kPath, kManager, "ListUnitsByPatterns", deadline, failure, "asas", 4,
                "active", "activating", "reloading", "deactivating", 1, "*.service");
  if (!answer) return std::nullopt;

  std::map<std::string, std::string, std::less<>> services;
  if (sd_bus_message_enter_container(answer.get(), 'a', "(ssssssouso)") < 0) {
    return misunderstood(failure);
  }
  const char* unit = nullptr;
  const char* object = nullptr;
  int result = 0;
  while (
      (result = sd_bus_message_read(answer.get(), "(ssssssouso)", &unit, nullptr, nullptr, nullptr,
                                    nullptr, nullptr, &object, nullptr, nullptr, nullptr)) > 0) {
    services[unit] = object;
  }
  if (result < 0) return misunderstood(failure);
  return services;
}

BusMessage UserManager::property(const std::string& object, const char* interface, const char* name,
                                 Deadline deadline, BusFailure& failure) {
  return bus_.call(kService, object.c_str(), "org.freedesktop.DBus.Properties", "Get", deadline,
                   failure, "ss", interface, name);
}

std::optional<std::uint32_t> UserManager::mainPid(const std::string& object, Deadline deadline,
                                                  BusFailure& failure) {
  const BusMessage answer = property(object, kServiceUnit, "MainPID", deadline, failure);
  if (!answer) return std::nullopt;
  std::uint32_t pid = 0;
  if (sd_bus_message_read(answer.get(), "v", "u", &pid) <= 0) return misunderstood(failure);
  return pid;
}

std::optional<std::string> UserManager::activeState(const std::string& unit, Deadline deadline,
                                                    BusFailure& failure) {
  const BusMessage found =
      bus_.call(kService, kPath, kManager, "GetUnit", deadline, failure, "s", unit.c_str());
  if (!found) return failure.name == kNoSuchUnit ? std::optional(std::string()) : std::nullopt;
  const char* object = nullptr;
  if (sd_bus_message_read(found.get(), "o", &object) <= 0) return misunderstood(failure);

  const BusMessage answer = property(object, kUnit, "ActiveState", deadline, failure);
  if (!answer) return std::nullopt;
  const char* state = nullptr;
  if (sd_bus_message_read(answer.get(), "v", "s", &state) <= 0) return misunderstood(failure);
  return state;
}

std::optional<std::string> UserManager::runJob(const char* method, const std::string& unit,
                                               Deadline deadline, BusFailure& failure) {
  // The manager speaks of its jobs while somebody is subscribed; that we are already is no error.
  bus_.call(kService, kPath, kManager, "Subscribe", deadline, failure);
  if (failure.number == ETIMEDOUT) return std::nullopt;
  FinishedJobs jobs;
  if (!jobs.watch(bus_.get())) return std::nullopt;
  const BusMessage answer = bus_.call(kService, kPath, kManager, method, deadline, failure, "ss",
                                      unit.c_str(), "replace");
  if (!answer) return std::nullopt;
  const char* job = nullptr;
  if (sd_bus_message_read(answer.get(), "o", &job) <= 0) return misunderstood(failure);

  std::optional<std::string> result;
  while (!(result = jobs.resultOf(job))) {
    if (!bus_.processOne(deadline, failure)) return std::nullopt;
  }
  BusFailure ignored;
  bus_.call(kService, kPath, kManager, "Unsubscribe", deadline, ignored);
  return result;
}

std::optional<std::string> UserManager::stop(const std::string& unit, Deadline deadline,
                                             BusFailure& failure) {
  return runJob("StopUnit", unit, deadline, failure);
}

std::optional<std::string> UserManager::start(const std::string& unit, Deadline deadline,
                                              BusFailure& failure) {
  return runJob("StartUnit", unit, deadline, failure);
}

}  // namespace platform
