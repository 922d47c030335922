#include "platform/linux/user_folders.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>

namespace platform {
namespace {

std::filesystem::path absolutePathIn(const char* variable) {
  const char* value = std::getenv(variable);
  std::filesystem::path path = value == nullptr ? "" : value;
  return path.is_absolute() ? path : std::filesystem::path();
}

std::filesystem::path homeFolder() {
  if (auto home = absolutePathIn("HOME"); !home.empty()) return home;
  const passwd* account = getpwuid(getuid());
  return account == nullptr || account->pw_dir == nullptr ? "" : account->pw_dir;
}

}  // namespace

std::filesystem::path userFolder(const char* variable, const char* otherwise) {
  if (auto folder = absolutePathIn(variable); !folder.empty()) return folder;
  const auto home = homeFolder();
  return home.empty() ? home : home / otherwise;
}

}  // namespace platform
