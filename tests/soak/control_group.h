#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string>

/// A control group of the test's own, of either version of the kernel's interface. It is
/// removed at the end of its scope, when all that was in it has ended or left.
class ControlGroup {
 public:
  /// `controller`: "freezer" or "memory".
  explicit ControlGroup(const std::string& controller);
  ~ControlGroup();
  ControlGroup(const ControlGroup&) = delete;
  ControlGroup& operator=(const ControlGroup&) = delete;

  /// Why there is none; "" when there is.
  const std::string& reason() const { return reason_; }

  bool add(pid_t pid) const;
  bool limitMemory(long bytes) const;
  /// How many processes the kernel has ended because the group's memory was used up.
  int killsForMemory() const;
  bool freeze() const;  ///< and waits until all in it stand still
  bool thaw() const;

 private:
  bool write(const char* file, const std::string& value) const;

  std::filesystem::path folder_;
  std::string reason_;
  bool isUnified_ = false;
};
