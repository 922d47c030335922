#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/linux/file_tree.h"

namespace platform {

/// The name under which NVIDIA's driver installs the library that tells of memory.
inline constexpr const char* kNvidiaLibrary = "libnvidia-ml.so.1";

/// By what that library can be loaded: its path, or its name where the loader finds it by name; ""
/// when it is not installed. Loads nothing.
/// `loaderCache` is the path of the loader's list of libraries, `folders` are looked into first.
std::string findNvidiaLibrary(const std::string& loaderCache,
                              const std::vector<std::string>& folders);

/// The same on this machine: the folders of $LD_LIBRARY_PATH and those where distributions and
/// containers keep it beside the loader's list.
std::string findNvidiaLibrary();

/// What the bus says of NVIDIA's cards.
struct NvidiaCards {
  /// One of them sleeps: who touches the driver wakes it.
  bool oneSleeps = false;
  /// One of them is put to sleep when nobody uses it.
  bool oneMaySleep = false;
};

/// Of `sys`, which is /sys. Nothing is true where the bus lists none, as in some containers.
NvidiaCards nvidiaCards(const FileTree& sys);

}  // namespace platform
