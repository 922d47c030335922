#include "platform/posix/manifest_files.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <memory>
#include <optional>
#include <string_view>

#include "text/unicode.h"

namespace platform {
namespace {

/// REGISTRY/NAMESPACE/MODEL/TAG
constexpr int kDeepest = 4;
constexpr std::size_t kMostEntries = 4096;

struct CloseFolder {
  void operator()(DIR* folder) const { closedir(folder); }
};
using Folder = std::unique_ptr<DIR, CloseFolder>;

/// The entries of an open folder; takes over its descriptor.
Folder folderOf(int descriptor) {
  if (descriptor < 0) return nullptr;
  Folder folder(fdopendir(descriptor));
  if (!folder) close(descriptor);
  return folder;
}

class Reading {
 public:
  explicit Reading(std::uint32_t owner) : owner_(owner) {}

  void readFolder(const Folder& folder, const std::string& path, int depth) {
    if (!folder) return;
    while (const dirent* const entry = readdir(folder.get())) {
      if (++entries_ > kMostEntries || manifests_.size() >= kMostModelManifests) return;
      const std::string_view name = entry->d_name;
      if (name.starts_with('.') || !text::isUtf8(name)) continue;
      const std::string below = path.empty() ? std::string(name) : path + "/" + std::string(name);
      const int at = dirfd(folder.get());
      struct stat status = {};
      if (fstatat(at, entry->d_name, &status, AT_SYMLINK_NOFOLLOW) != 0) continue;
      if (S_ISDIR(status.st_mode) && depth < kDeepest) {
        constexpr int kFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
        readFolder(folderOf(openat(at, entry->d_name, kFlags)), below, depth + 1);
      } else if (S_ISREG(status.st_mode)) {
        if (auto text = readFile(at, entry->d_name))
          manifests_.push_back({below, std::move(*text)});
      }
    }
  }

  std::vector<ModelManifest> manifests() { return std::move(manifests_); }

 private:
  std::optional<std::string> readFile(int folder, const char* name) const {
    // O_NONBLOCK: it may have become a pipe meanwhile, and opening that would wait.
    const int file =
        openat(folder, name, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (file < 0) return std::nullopt;
    auto text = readOwned(file);
    close(file);
    return text;
  }

  std::optional<std::string> readOwned(int file) const {
    struct stat status = {};
    if (fstat(file, &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
    if (status.st_uid != owner_ && status.st_uid != 0) return std::nullopt;
    if (status.st_size < 0 || static_cast<std::size_t>(status.st_size) > kLongestModelManifest) {
      return std::nullopt;
    }
    std::string text(static_cast<std::size_t>(status.st_size), '\0');
    std::size_t length = 0;
    while (length < text.size()) {
      const ssize_t count = read(file, text.data() + length, text.size() - length);
      if (count < 0 && errno == EINTR) continue;
      if (count <= 0) break;
      length += static_cast<std::size_t>(count);
    }
    text.resize(length);
    if (!text::isUtf8(text)) return std::nullopt;
    return text;
  }

  std::uint32_t owner_;
  std::size_t entries_ = 0;
  std::vector<ModelManifest> manifests_;
};

}  // namespace

std::vector<ModelManifest> manifestFiles(const std::string& modelFolder, std::uint32_t owner) {
  Reading reading(owner);
  constexpr int kFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
  reading.readFolder(folderOf(open((modelFolder + "/manifests").c_str(), kFlags)), {}, 1);
  return reading.manifests();
}

}  // namespace platform
