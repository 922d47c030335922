#include "platform/linux/unit_folders.h"

#include <sys/stat.h>
#include <sys/sysmacros.h>

#include <algorithm>
#include <iterator>
#include <string_view>

#include "platform/linux/file_reader.h"
#include "platform/linux/unit_file.h"
#include "platform/linux/user_folders.h"
#include "text/unicode.h"

namespace platform {
namespace {

constexpr const char* kMachineUnitFolder = "/etc/systemd/user";
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

std::vector<LaunchAgentFile> launchAgentFiles() {
  std::vector<LaunchAgentFile> files = launchAgentFilesIn(userUnitFolder());
  auto machine = launchAgentFilesIn(kMachineUnitFolder);
  std::ranges::move(machine, std::back_inserter(files));
  return files;
}

std::filesystem::path userUnitFolder() {
  const auto config = userFolder("XDG_CONFIG_HOME", ".config");
  return config.empty() ? config : config / "systemd/user";
}

}  // namespace platform
