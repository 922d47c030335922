#pragma once

#include <filesystem>

/// A folder on a file system that does not answer, until this ends or answers() is called: then
/// every question fails. Only root can mount one.
class HangingFolder {
 public:
  /// Over a folder that is there.
  explicit HangingFolder(std::filesystem::path path);
  ~HangingFolder();
  HangingFolder(const HangingFolder&) = delete;
  HangingFolder& operator=(const HangingFolder&) = delete;

  /// False where this machine does not let the test mount one.
  bool hangs() const { return isMounted_; }

  void answers();

 private:
  std::filesystem::path path_;
  int device_ = -1;
  bool isMounted_ = false;
};
