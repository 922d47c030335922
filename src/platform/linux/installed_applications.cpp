#include "platform/linux/installed_applications.h"

#include <algorithm>
#include <cstdlib>
#include <set>
#include <string_view>

#include "platform/linux/file_reader.h"
#include "platform/linux/home.h"
#include "platform/linux/regular_file.h"

namespace platform {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kLongestFile = 1 << 20;

std::vector<fs::path> entryFilesBelow(const fs::path& folder) {
  constexpr int kDeepest = 8;  // links may lead in circles
  std::vector<fs::path> files;
  std::error_code error;
  const auto options = fs::directory_options::follow_directory_symlink |
                       fs::directory_options::skip_permission_denied;
  for (fs::recursive_directory_iterator file(folder, options, error), end; !error && file != end;
       file.increment(error)) {
    if (file.depth() >= kDeepest) file.disable_recursion_pending();
    if (file->path().extension() == ".desktop") files.push_back(file->path());
  }
  std::sort(files.begin(), files.end());
  return files;
}

std::string idOf(const fs::path& file, const fs::path& folder) {
  std::string id = file.lexically_relative(folder).string();
  std::replace(id.begin(), id.end(), '/', '-');
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
  while (!shared.empty()) {
    const auto end = std::min(shared.find(':'), shared.size());
    const fs::path folder = shared.substr(0, end);
    if (folder.is_absolute()) folders.push_back(folder / "applications");
    shared.remove_prefix(std::min(end + 1, shared.size()));
  }
  return folders;
}

std::vector<InstalledApplication> installedApplications(const std::vector<fs::path>& folders) {
  std::vector<InstalledApplication> applications;
  std::set<std::string> seen;
  FileReader reader(kLongestFile);
  for (const auto& folder : folders) {
    for (const auto& file : entryFilesBelow(folder)) {
      std::string id = idOf(file, folder);
      if (!seen.insert(id).second) continue;
      const auto bytes = readRegularFile(file.c_str(), reader);
      auto entry = bytes ? desktopEntry(*bytes) : std::nullopt;
      if (!entry || entry->isHidden) continue;
      applications.push_back({std::move(id), file, std::move(*entry)});
    }
  }
  return applications;
}

}  // namespace platform
