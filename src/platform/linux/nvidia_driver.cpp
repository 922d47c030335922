#include "platform/linux/nvidia_driver.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <string_view>

#include "platform/linux/drm_cards.h"
#include "platform/linux/file_reader.h"
#include "text/split.h"

namespace platform {
namespace {

bool isFile(const std::string& path) {
  struct stat status = {};
  return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

}  // namespace

std::string findNvidiaLibrary(const std::string& loaderCache,
                              const std::vector<std::string>& folders) {
  for (const std::string& folder : folders) {
    std::string path = folder + "/" + kNvidiaLibrary;
    if (path.front() == '/' && isFile(path)) return path;
  }
  constexpr std::size_t kLongestCache = 4 << 20;
  FileReader reader(kLongestCache);
  const auto cache = readRegularFile(loaderCache.c_str(), reader);
  const bool isListed = cache && cache->find(kNvidiaLibrary) != std::string_view::npos;
  return isListed ? kNvidiaLibrary : "";
}

std::string findNvidiaLibrary() {
  std::vector<std::string> folders;
  if (const char* variable = std::getenv("LD_LIBRARY_PATH")) {
    for (const std::string_view folder : text::partsOf(variable, ':')) folders.emplace_back(folder);
  }
  // NixOS, WSL, and containers whose runtime brings the driver.
  for (const char* folder :
       {"/run/opengl-driver/lib", "/usr/lib/wsl/lib", "/usr/local/nvidia/lib64"}) {
    folders.emplace_back(folder);
  }
  return findNvidiaLibrary("/etc/ld.so.cache", folders);
}

NvidiaCards nvidiaCards(const FileTree& sys) {
  NvidiaCards cards;
  const std::string folder = "bus/pci/devices";
  for (const std::string& name : sys.names(folder)) {
    std::string device = folder;
    device.append("/").append(name);
    // Only NVIDIA's display controllers: a card's sound and USB devices sleep on their own.
    if (sys.line(device + "/vendor") != "0x10de") continue;
    if (!sys.line(device + "/class").starts_with("0x03")) continue;
    cards.oneSleeps = cards.oneSleeps || isAsleep(sys, device);
    cards.oneMaySleep = cards.oneMaySleep || sys.line(device + "/power/control") == "auto";
  }
  return cards;
}

}  // namespace platform
