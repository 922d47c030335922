#include "platform/linux/systemd_inquiry.h"

#include <algorithm>
#include <filesystem>
#include <set>

#include "platform/linux/systemd_manager.h"
#include "platform/processes.h"

namespace platform {
namespace {

constexpr std::size_t kMostServices = 10'000;
constexpr std::size_t kMostPids = 256;

/// Whether the failure means that the manager itself has gone, and not only the unit.
bool isFromNobody(const BusFailure& failure) {
  return failure.name.empty() ? failure.number != 0
                              : failure.name == SD_BUS_ERROR_NO_REPLY ||
                                    failure.name == SD_BUS_ERROR_SERVICE_UNKNOWN ||
                                    failure.name == SD_BUS_ERROR_NAME_HAS_NO_OWNER;
}

/// The unit that a launch agent file stands for, among those that are loaded.
template <typename Services>
auto unitOf(const LaunchAgentFile& file, const Services& services) {
  const auto own = services.find(file.label + ".service");
  if (own != services.end()) return own;
  std::error_code error;
  if (!std::filesystem::is_symlink(file.path, error)) return own;
  return services.find(std::filesystem::canonical(file.path, error).filename().string());
}

}  // namespace

LoadedLaunchAgents LoadedServices::launchAgentsOf(std::span<const LaunchAgentFile> files) const {
  LoadedLaunchAgents loaded;
  for (const auto& file : files) {
    const auto service = unitOf(file, pids);
    if (service != pids.end()) loaded.try_emplace(file.label, service->second);
  }
  return loaded;
}

SystemdInquiry::SystemdInquiry(UserBus& bus)
    : bus_(bus),
      list_(bus, ServiceManager::kName, ServiceManager::kPath, ServiceManager::kInterface,
            "ListUnitsByPatterns", "asas", 4, "active", "activating", "reloading", "deactivating",
            1, "*.service") {}

bool SystemdInquiry::carryOn(std::span<const LaunchAgentFile> files) {
  if (!list_.isAnswered()) return false;
  if (!listWasRead_) {
    listWasRead_ = true;
    failed_ = !readList();
    if (!failed_) askForPids(files);
  }
  while (answered_ < pids_.size() && pids_[answered_].second->isAnswered()) ++answered_;
  return answered_ == pids_.size();
}

bool SystemdInquiry::readList() {
  sd_bus_message* list = list_.answer();
  if (list == nullptr ||
      sd_bus_message_enter_container(list, 'a', ServiceManager::kListedUnit) < 0) {
    return false;
  }
  const char* unit = nullptr;
  const char* object = nullptr;
  while (objects_.size() < kMostServices) {
    const int read =
        sd_bus_message_read(list, ServiceManager::kListedUnit, &unit, nullptr, nullptr, nullptr,
                            nullptr, nullptr, &object, nullptr, nullptr, nullptr);
    if (read < 0) return false;
    if (read == 0) break;
    objects_.try_emplace(unit, object);
  }
  return true;
}

void SystemdInquiry::askForPids(std::span<const LaunchAgentFile> files) {
  services_.askedAt = processClock();
  for (const auto& [unit, object] : objects_) services_.pids.try_emplace(unit, std::nullopt);
  std::set<std::string_view> asked;
  for (const auto& file : files) {
    const auto found = unitOf(file, objects_);
    if (found == objects_.end() || !asked.insert(found->first).second) continue;
    pids_.emplace_back(found->first,
                       std::make_unique<BusCall>(bus_, ServiceManager::kName, found->second.c_str(),
                                                 "org.freedesktop.DBus.Properties", "Get", "ss",
                                                 "org.freedesktop.systemd1.Service", "MainPID"));
    if (pids_.size() == kMostPids) return;
  }
}

std::optional<LoadedServices> SystemdInquiry::takeAnswer() {
  if (failed_) return std::nullopt;
  for (const auto& [unit, call] : pids_) {
    if (isFromNobody(call->failure())) return std::nullopt;
    std::uint32_t pid = 0;
    sd_bus_message* answer = call->answer();  // null for a unit that has gone in the meantime
    if (answer != nullptr && sd_bus_message_read(answer, "v", "u", &pid) > 0 && pid != 0 &&
        std::in_range<std::int32_t>(pid)) {
      services_.pids[unit] = static_cast<std::int32_t>(pid);
    }
  }
  return std::move(services_);
}

}  // namespace platform
