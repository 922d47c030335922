#pragma once

#include <filesystem>
#include <string>
#include <string_view>

/// A folder of the test's own, removed with all that is in it at the end of its scope. It is
/// open to every user, as a played process of another user may have to reach into it.
class TempFolder {
 public:
  TempFolder();
  ~TempFolder();
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  const std::filesystem::path& path() const { return path_; }
  std::filesystem::path operator/(std::string_view name) const { return path_ / name; }

  /// Makes a file, and the folders on the way to it.
  void write(std::string_view name, std::string_view bytes) const;
  void link(std::string_view name, std::string_view target) const;

 private:
  std::filesystem::path path_;
};
