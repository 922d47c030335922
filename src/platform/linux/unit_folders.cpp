#include "platform/linux/unit_folders.h"

#include <sys/sysmacros.h>

#include <algorithm>
#include <cstdlib>
#include <string_view>
#include <tuple>

#include "platform/linux/file_reader.h"
#include "platform/linux/unit_file.h"
#include "platform/linux/user_folders.h"
#include "text/unicode.h"

namespace platform {
namespace {

constexpr std::string_view kSuffix = ".service";

// What is looked at of a folder, however much is in it: it is walked at every refresh.
constexpr std::size_t kMostUnitEntries = 10'000;
constexpr std::size_t kMostFiles = 1'000;
constexpr std::size_t kLongestUnitFile = 64 << 10;
constexpr std::size_t kMostUnitBytes = 8 << 20;  // of all files together

bool isServiceFile(std::string_view name) {
  if (!name.ends_with(kSuffix) || !text::isUtf8(name)) return false;
  const std::string_view label = name.substr(0, name.size() - kSuffix.size());
  return !label.empty() && !label.ends_with('@');
}

std::vector<std::string> serviceFilesIn(const std::filesystem::path& folder) {
  std::vector<std::string> names;
  std::error_code error;
  std::size_t entries = 0;
  for (std::filesystem::directory_iterator entry(folder, error), end;
       !error && entry != end && entries < kMostUnitEntries; entry.increment(error), ++entries) {
    if (auto name = entry->path().filename().string(); isServiceFile(name)) {
      names.push_back(std::move(name));
    }
  }
  std::ranges::sort(names);
  names.resize(std::min(names.size(), kMostFiles));
  return names;
}

bool isNullDevice(const struct stat& status) {
  constexpr unsigned kMemoryDevices = 1;
  constexpr unsigned kNull = 3;
  return S_ISCHR(status.st_mode) && status.st_rdev == makedev(kMemoryDevices, kNull);
}

/// What the file holds: nothing when it is /dev/null, by which a unit is masked; none when it is
/// no regular file.
std::optional<std::string_view> bytesOf(const std::string& path, FileReader& reader) {
  struct stat status = {};
  if (stat(path.c_str(), &status) == 0 && isNullDevice(status)) return "";
  return readRegularFile(path.c_str(), reader);
}

}  // namespace

std::vector<LaunchAgentFile> launchAgentFilesIn(const std::filesystem::path& folder) {
  std::vector<LaunchAgentFile> files;
  FileReader reader(kLongestUnitFile);
  std::size_t bytesRead = 0;
  for (const auto& name : serviceFilesIn(folder)) {
    std::string path = folder / name;
    const auto bytes = bytesOf(path, reader);
    if (!bytes) continue;
    bytesRead += bytes->size();
    if (bytesRead > kMostUnitBytes) break;
    ServiceUnit unit = serviceUnit(*bytes);
    files.push_back({.label = name.substr(0, name.size() - kSuffix.size()),
                     .path = std::move(path),
                     .programArguments = std::move(unit.command),
                     .keepAlive = unit.keepAlive});
  }
  return files;
}

LaunchAgentFolder::Stamp LaunchAgentFolder::stampOf(const char* path) {
  struct stat status = {};
  return stat(path, &status) == 0 ? Stamp(status) : std::nullopt;
}

bool LaunchAgentFolder::isSame(const Stamp& a, const Stamp& b) {
  if (!a || !b) return a.has_value() == b.has_value();
  const auto parts = [](const struct stat& status) {
    return std::tie(status.st_dev, status.st_ino, status.st_mode, status.st_size,
                    status.st_mtim.tv_sec, status.st_mtim.tv_nsec, status.st_ctim.tv_sec,
                    status.st_ctim.tv_nsec);
  };
  return parts(*a) == parts(*b);
}

bool LaunchAgentFolder::isAsItWas() const {
  return isSettled_ && isSame(stampOf(path_.c_str()), stamp_) &&
         std::ranges::all_of(entries_, [](const Entry& entry) {
           return isSame(stampOf(entry.path.c_str()), entry.stamp);
         });
}

bool LaunchAgentFolder::update() {
  if (isAsItWas()) return false;
  // A file that changes twice within one tick of the file system's clock has the same times after
  // both changes. So what has changed just now is read again the next time.
  constexpr std::time_t kCoarsestTick = 2;  // seconds
  const std::time_t now = now_();
  const auto isOld = [now](const Stamp& stamp) {
    return !stamp || stamp->st_ctim.tv_sec < now - kCoarsestTick;
  };
  stamp_ = stampOf(path_.c_str());
  isSettled_ = isOld(stamp_);
  entries_.clear();
  for (const auto& name : serviceFilesIn(path_)) {
    std::string path = path_ / name;
    Stamp stamp = stampOf(path.c_str());
    isSettled_ = isSettled_ && isOld(stamp);
    entries_.push_back({std::move(path), stamp});
  }
  files_ = launchAgentFilesIn(path_);
  return true;
}

std::span<const LaunchAgentFile> UserUnitFiles::read() {
  const auto differs = [](std::string& known, const char* variable) {
    const char* const value = std::getenv(variable);
    const std::string_view now = value == nullptr ? "" : value;
    if (known == now) return false;
    known = now;
    return true;
  };
  // No || of the calls: each must be made, because it also remembers what it has seen.
  const bool hasConfig = differs(config_, "XDG_CONFIG_HOME");
  const bool hasHome = differs(home_, "HOME");
  if (hasConfig || hasHome) user_ = LaunchAgentFolder(userUnitFolder());
  const bool isUsersNew = user_.update();
  const bool isMachinesNew = machine_.update();
  if (isUsersNew || isMachinesNew) {
    all_ = user_.files();
    all_.insert(all_.end(), machine_.files().begin(), machine_.files().end());
  }
  return all_;
}

std::span<const LaunchAgentFile> launchAgentFiles() {
  static UserUnitFiles files;
  return files.read();
}

std::filesystem::path userUnitFolder() {
  const auto config = userFolder("XDG_CONFIG_HOME", ".config");
  return config.empty() ? config : config / "systemd/user";
}

}  // namespace platform
