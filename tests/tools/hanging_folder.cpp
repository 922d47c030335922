#include "tools/hanging_folder.h"

#include <fcntl.h>
#include <sys/mount.h>
#include <unistd.h>

#include <string>
#include <utility>

// A FUSE file system whose daemon never reads the kernel's questions.
HangingFolder::HangingFolder(std::filesystem::path path) : path_(std::move(path)) {
  device_ = open("/dev/fuse", O_RDWR | O_CLOEXEC);
  if (device_ < 0) return;
  const std::string options =
      "fd=" + std::to_string(device_) + ",rootmode=40000,user_id=0,group_id=0";
  isMounted_ = mount("hanging", path_.c_str(), "fuse", MS_NOSUID | MS_NODEV, options.c_str()) == 0;
}

HangingFolder::~HangingFolder() {
  answers();
  if (isMounted_) umount2(path_.c_str(), MNT_DETACH);
}

void HangingFolder::answers() {
  if (device_ >= 0) close(device_);
  device_ = -1;
}
