#include "platform/linux/installed_applications.h"

#include <sys/stat.h>

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <set>
#include <string_view>
#include <utility>

#include "platform/linux/file_reader.h"
#include "platform/linux/user_folders.h"
#include "text/split.h"

namespace platform {
namespace {

namespace fs = std::filesystem;

// Limits on what is read, however much there is.
constexpr std::size_t kMostEntries = 20'000;  // of all folders together
constexpr int kDeepest = 8;                   // folders below the first
constexpr std::size_t kLongestFile = 256 << 10;
constexpr std::size_t kMostBytes = 32 << 20;  // of all files together

/// Finds the .desktop files below one folder after the other. A folder that several links lead to
/// is entered once, by its shortest path; of equally short ones by the first in order of names.
class Walk {
 public:
  std::vector<fs::path> entryFilesBelow(const fs::path& folder) {
    std::vector<fs::path> files;
    std::vector<fs::path> level{folder};
    for (int depth = 0; depth <= kDeepest && !level.empty(); ++depth) {
      std::vector<fs::path> below;
      for (const auto& one : level) enter(one, files, below);
      level = std::move(below);
    }
    std::ranges::sort(files);
    return files;
  }

 private:
  void enter(const fs::path& folder, std::vector<fs::path>& files, std::vector<fs::path>& below) {
    struct stat status = {};
    if (stat(folder.c_str(), &status) != 0 || !S_ISDIR(status.st_mode)) return;
    if (!entered_.emplace(status.st_dev, status.st_ino).second) return;
    std::vector<fs::path> folders;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end;
         !error && entry != end && entries_ < kMostEntries; entry.increment(error), ++entries_) {
      std::error_code unknown;
      if (entry->path().extension() == ".desktop") {
        files.push_back(entry->path());
      } else if (entry->is_directory(unknown)) {
        folders.push_back(entry->path());
      }
    }
    std::ranges::sort(folders);
    std::ranges::move(folders, std::back_inserter(below));
  }

  std::set<std::pair<dev_t, ino_t>> entered_;
  std::size_t entries_ = 0;
};

std::string idOf(const fs::path& file, const fs::path& folder) {
  std::string id = file.lexically_relative(folder).string();
  std::ranges::replace(id, '/', '-');
  return id;
}

}  // namespace

std::vector<fs::path> applicationFolders() {
  std::vector<fs::path> folders;
  if (auto own = userFolder("XDG_DATA_HOME", ".local/share"); !own.empty()) {
    folders.push_back(own / "applications");
  }
  const char* variable = std::getenv("XDG_DATA_DIRS");
  std::string_view shared = variable == nullptr ? "" : variable;
  if (shared.empty()) shared = "/usr/local/share:/usr/share";
  for (const fs::path folder : text::partsOf(shared, ':')) {
    if (folder.is_absolute()) folders.push_back(folder / "applications");
  }
  return folders;
}

std::vector<InstalledApplication> installedApplications(const std::vector<fs::path>& folders) {
  std::vector<InstalledApplication> applications;
  std::set<std::string> seen;
  Walk walk;
  FileReader reader(kLongestFile);
  std::size_t bytesRead = 0;
  for (const auto& folder : folders) {
    for (const auto& file : walk.entryFilesBelow(folder)) {
      std::string id = idOf(file, folder);
      if (!seen.insert(id).second) continue;
      const auto bytes = readRegularFile(file.c_str(), reader);
      bytesRead += bytes ? bytes->size() : 0;
      if (bytesRead > kMostBytes) return applications;
      auto entry = bytes ? desktopEntry(*bytes) : std::nullopt;
      if (!entry || entry->isHidden) continue;
      applications.push_back({std::move(id), file, std::move(*entry)});
    }
  }
  return applications;
}

}  // namespace platform
