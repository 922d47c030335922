// NVIDIA's management library as tests need it: a shared library with the functions of one version
// of the driver, which does what $NVML_DOUBLE says, words between blanks:
//
//   cards=2          how many cards there are (1)
//   pid=4711         whose memory is the largest (4711)
//   init=9           nvmlInit answers this; likewise count, handle, memory, processes, graphics
//   lost=0           card 0 answers nothing but its handle
//   hang=init        that function never comes back, and no alarm ends it; also load, processes
//   slow=init        that function takes an hour
//   crash=init       that function crashes; also load, processes
//   unified          cards have no memory of their own
//   mig              the card is divided; mig=closed: and only its parts tell
//   wrong            the driver tells of pids and figures that can't be
//   grows            each list is longer when it is asked for than it was when it was counted
//   log=/tmp/x       init, shutdown and the process's own pid are written down there
//
// The functions that it has are chosen when it is built: see CMakeLists.txt.
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sstream>
#include <string>
#include <vector>

#define EXPORTED extern "C" __attribute__((visibility("default")))

namespace {

using Device = std::uintptr_t;  // 1 and up: cards; 101 and up: parts of the first
constexpr Device kFirstPart = 101;
constexpr std::uint64_t kGiB = 1ULL << 30;
constexpr std::uint64_t kUnknown = ~0ULL;

/// The value of a word; "" when it stands without one, "-" when it is not there.
std::string setting(const std::string& name) {
  const char* const all = std::getenv("NVML_DOUBLE");
  std::istringstream words(all == nullptr ? "" : all);
  for (std::string word; words >> word;) {
    if (word == name) return "";
    if (word.starts_with(name + "=")) return word.substr(name.size() + 1);
  }
  return "-";
}

unsigned number(const std::string& name, unsigned otherwise) {
  const std::string value = setting(name);
  return value == "-" ? otherwise : static_cast<unsigned>(std::stoul(value));
}

[[maybe_unused]] void write(const std::string& line) {
  const std::string log = setting("log");
  if (log == "-") return;
  const int file = open(log.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0666);
  [[maybe_unused]] const auto count = ::write(file, line.data(), line.size());
  close(file);
}

/// What every function does first.
int enter(const std::string& function) {
  if (setting("hang") == function) {
    sigset_t all;
    sigfillset(&all);
    sigprocmask(SIG_BLOCK, &all, nullptr);
    for (;;) pause();
  }
  if (setting("slow") == function) sleep(3600);
  if (setting("crash") == function) std::abort();
  return static_cast<int>(number(function, 0));
}

const bool kLoaded = [] {
  enter("load");
  return true;
}();

struct Process {
  std::uint32_t pid;
  std::uint64_t bytes;
  std::uint32_t instance = 0xFFFFFFFF;
};

[[maybe_unused]] int processes(Device device, std::uint32_t* count, void* records, std::size_t size,
                               const std::vector<Process>& all) {
  if (const int status = enter("processes")) return status;
  if (number("lost", 999) + 1 == device) return 15;
  if (setting("mig") == "closed" && device < kFirstPart) return 4;
  const std::size_t told = all.size() + (setting("grows") != "-" && records != nullptr ? 3 : 0);
  if (*count < told) {
    *count = static_cast<std::uint32_t>(told);
    return 7;
  }
  auto* const bytes = static_cast<char*>(records);
  if (told > 0) std::memset(bytes, 0, told * size);
  for (std::size_t i = 0; i < all.size(); ++i) {
    std::memcpy(bytes + i * size, &all[i].pid, 4);
    std::memcpy(bytes + i * size + 8, &all[i].bytes, 8);
    if (size > 16) {
      std::memcpy(bytes + i * size + 16, &all[i].instance, 4);
      std::memcpy(bytes + i * size + 20, &all[i].instance, 4);
    }
    if (size > 24) std::memcpy(bytes + i * size + 24, &kUnknown, 8);
  }
  *count = static_cast<std::uint32_t>(told);
  return 0;
}

[[maybe_unused]] std::vector<Process> computing(Device device) {
  const std::uint32_t pid = number("pid", 4711);
  if (setting("wrong") != "-") {
    return {{0, kGiB}, {0xFFFFFFFF, kGiB}, {0x80000000, kGiB}, {4714, 0}, {pid, 36 * kGiB}};
  }
  if (setting("mig") == "closed") return {{pid, (device - kFirstPart + 1) * kGiB, 1}};
  if (setting("mig") != "-") return {{pid, 5 * kGiB, 1}, {pid, 7 * kGiB, 2}, {4712, kGiB, 2}};
  if (device == 2) return {{pid, 2 * kGiB}};
  return {{pid, 36 * kGiB}, {4712, kUnknown}};
}

[[maybe_unused]] std::vector<Process> drawing(Device device) {
  if (setting("mig") != "-" || device != 1) return {};
  return {{number("pid", 4711), kGiB}, {4713, kGiB / 2}};
}

int memory(Device device, std::uint64_t& total, std::uint64_t& used) {
  if (const int status = enter("memory")) return status;
  if (number("lost", 999) + 1 == device) return 15;
  if (setting("mig") == "closed" && device < kFirstPart) return 4;
  total = setting("unified") == "-" ? 80 * kGiB : 0;
  used = 38 * kGiB;
  if (device >= kFirstPart) total = used = 10 * kGiB;
  return 0;
}

}  // namespace

#ifndef WITHOUT_INIT
#if VERSION > 1
EXPORTED int nvmlInit_v2() {
#else
EXPORTED int nvmlInit() {
#endif
  write("init " + std::to_string(getpid()) + "\n");
  return enter("init");
}
EXPORTED int nvmlShutdown() {
  write("shutdown\n");
  return 0;
}
#endif

#if VERSION > 1
EXPORTED int nvmlDeviceGetCount_v2(std::uint32_t* count) {
#else
EXPORTED int nvmlDeviceGetCount(std::uint32_t* count) {
#endif
  *count = number("cards", 1);
  return enter("count");
}

#if VERSION > 1
EXPORTED int nvmlDeviceGetHandleByIndex_v2(std::uint32_t index, Device* device) {
#else
EXPORTED int nvmlDeviceGetHandleByIndex(std::uint32_t index, Device* device) {
#endif
  *device = index + 1;
  return enter("handle");
}

#ifndef FEW
#if VERSION > 2
EXPORTED int nvmlDeviceGetPciInfo_v3(Device device, std::uint32_t* info) {
#else
EXPORTED int nvmlDeviceGetPciInfo_v2(Device device, std::uint32_t* info) {
#endif
  info[4] = 0;
  info[5] = static_cast<std::uint32_t>(0x64 + device);
  info[6] = 0;
  return 0;
}

EXPORTED int nvmlDeviceGetName(Device, char* name, std::uint32_t length) {
  std::snprintf(name, length, "NVIDIA H100");
  return 0;
}

#if VERSION == 1
#define LIST(kind) nvmlDeviceGet##kind##RunningProcesses
constexpr std::size_t kSize = 16;
#elif VERSION == 2
#define LIST(kind) nvmlDeviceGet##kind##RunningProcesses_v2
constexpr std::size_t kSize = 24;
#else
#define LIST(kind) nvmlDeviceGet##kind##RunningProcesses_v3
#ifdef LONG_RECORDS
constexpr std::size_t kSize = 32;
#else
constexpr std::size_t kSize = 24;
#endif
#endif
EXPORTED int LIST(Compute)(Device device, std::uint32_t* count, void* records) {
  return processes(device, count, records, kSize, computing(device));
}
EXPORTED int LIST(Graphics)(Device device, std::uint32_t* count, void* records) {
  if (const int status = enter("graphics")) return status;
  return processes(device, count, records, kSize, drawing(device));
}
#endif  // FEW

#if defined(LONG_RECORDS) || defined(WITH_DETAILS)
EXPORTED int nvmlDeviceGetConfComputeMemSizeInfo() {
  return 3;
}
#endif
#ifdef WITH_DETAILS
EXPORTED int nvmlDeviceGetRunningProcessDetailList() {
  return 3;
}
#endif

EXPORTED int nvmlDeviceGetMemoryInfo(Device device, std::uint64_t* record) {
  record[1] = 0;
  return memory(device, record[0], record[2]);
}
#if VERSION > 2
EXPORTED int nvmlDeviceGetMemoryInfo_v2(Device device, std::uint32_t* record) {
  if (record[0] != (40U | 2U << 24)) return 25;
  std::uint64_t total = 0;
  std::uint64_t used = 0;
  const int status = memory(device, total, used);
  std::memcpy(record + 2, &total, 8);
  std::memcpy(record + 8, &used, 8);
  return status;
}

EXPORTED int nvmlDeviceGetMaxMigDeviceCount(Device, std::uint32_t* count) {
  *count = setting("mig") == "-" ? 0 : 7;
  return 0;
}
EXPORTED int nvmlDeviceGetMigDeviceHandleByIndex(Device, std::uint32_t index, Device* part) {
  *part = kFirstPart + index;
  return index < 2 ? 0 : 6;
}
#endif
