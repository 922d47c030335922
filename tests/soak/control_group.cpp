#include "soak/control_group.h"

#include <unistd.h>

#include <fstream>
#include <iterator>
#include <sstream>

namespace {

/// Where a hierarchy of control groups is mounted; "" when it is not.
std::filesystem::path mountOf(const std::string& controller, bool unified) {
  std::ifstream mounts("/proc/self/mounts");
  for (std::string line; std::getline(mounts, line);) {
    std::istringstream words(line);
    std::string device;
    std::string folder;
    std::string kind;
    std::string options;
    words >> device >> folder >> kind >> options;
    if (unified ? kind == "cgroup2"
                : kind == "cgroup" &&
                      ("," + options + ",").find("," + controller + ",") != std::string::npos) {
      return folder;
    }
  }
  return {};
}

std::string contentOf(const std::filesystem::path& path) {
  std::ifstream file(path);
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace

ControlGroup::ControlGroup(const std::string& controller) {
  static int count = 0;
  const std::string name = "vorda-soak-" + std::to_string(getpid()) + "-" + std::to_string(++count);
  const std::string file = controller == "memory" ? "memory.max" : "cgroup.freeze";
  reason_ = "no control group for " + controller + " can be made here";
  for (const bool unified : {true, false}) {
    const auto root = mountOf(controller, unified);
    std::error_code error;
    if (root.empty() || !std::filesystem::create_directory(root / name, error)) continue;
    folder_ = root / name;
    isUnified_ = unified;
    if (!unified || std::filesystem::exists(folder_ / file)) {
      reason_.clear();
      return;
    }
    rmdir(folder_.c_str());  // the controller is not handed down to groups
    folder_.clear();
  }
}

ControlGroup::~ControlGroup() {
  for (int i = 0; !folder_.empty() && i < 1000 && rmdir(folder_.c_str()) != 0; ++i) usleep(5000);
}

bool ControlGroup::write(const char* file, const std::string& value) const {
  std::ofstream target(folder_ / file);
  target << value << std::flush;
  return target.good();
}

bool ControlGroup::add(pid_t pid) const {
  return write("cgroup.procs", std::to_string(pid));
}

bool ControlGroup::limitMemory(long bytes) const {
  return write(isUnified_ ? "memory.max" : "memory.limit_in_bytes", std::to_string(bytes));
}

int ControlGroup::killsForMemory() const {
  std::ifstream events(folder_ / (isUnified_ ? "memory.events" : "memory.oom_control"));
  int kills = 0;
  for (std::string word; events >> word;) {
    if (word == "oom_kill") events >> kills;
  }
  return kills;
}

bool ControlGroup::freeze() const {
  if (!write(isUnified_ ? "cgroup.freeze" : "freezer.state", isUnified_ ? "1" : "FROZEN")) {
    return false;
  }
  for (int i = 0; i < 1000; ++i) {
    const std::string state = contentOf(folder_ / (isUnified_ ? "cgroup.events" : "freezer.state"));
    if (state.find(isUnified_ ? "frozen 1" : "FROZEN") != std::string::npos) return true;
    usleep(5000);
  }
  return false;
}

bool ControlGroup::thaw() const {
  return write(isUnified_ ? "cgroup.freeze" : "freezer.state", isUnified_ ? "0" : "THAWED");
}
