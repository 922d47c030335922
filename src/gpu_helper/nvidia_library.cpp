#include "gpu_helper/nvidia_library.h"

#include <dlfcn.h>

#include <algorithm>
#include <array>
#include <cstring>

#include "text/format.h"
#include "text/unicode.h"

using platform::GpuAnswer;
using platform::GpuCapacity;
using platform::GpuDevice;
using platform::GpuUse;

NvidiaLibrary::NvidiaLibrary(const char* path) : library_(dlopen(path, RTLD_NOW | RTLD_LOCAL)) {
  if (library_ == nullptr) return;
  init_ = find<nvml::Init>({"nvmlInit_v2", "nvmlInit"});
  shutdown_ = find<nvml::Shutdown>({"nvmlShutdown"});
  getCount_ = find<nvml::GetCount>({"nvmlDeviceGetCount_v2", "nvmlDeviceGetCount"});
  getByIndex_ =
      find<nvml::GetByIndex>({"nvmlDeviceGetHandleByIndex_v2", "nvmlDeviceGetHandleByIndex"});
  getPciInfo_ = find<nvml::GetPciInfo>(
      {"nvmlDeviceGetPciInfo_v3", "nvmlDeviceGetPciInfo_v2", "nvmlDeviceGetPciInfo"});
  getName_ = find<nvml::GetName>({"nvmlDeviceGetName"});
  getMemory_ = find<nvml::GetMemory>({"nvmlDeviceGetMemoryInfo"});
  getMemoryV2_ = find<nvml::GetMemoryV2>({"nvmlDeviceGetMemoryInfo_v2"});
  getMaxMigCount_ = find<nvml::GetMaxMigCount>({"nvmlDeviceGetMaxMigDeviceCount"});
  getMigDevice_ = find<nvml::GetMigDevice>({"nvmlDeviceGetMigDeviceHandleByIndex"});
  for (const char* name :
       {"nvmlDeviceGetComputeRunningProcesses", "nvmlDeviceGetGraphicsRunningProcesses",
        "nvmlDeviceGetMPSComputeRunningProcesses"}) {
    if (const ProcessList list = processList(name); list.get != nullptr) lists_.push_back(list);
  }
}

NvidiaLibrary::~NvidiaLibrary() {
  letGo();
  if (library_ != nullptr) dlclose(library_);
}

/// The first of these functions that the library has; null: none.
template <typename Function>
Function NvidiaLibrary::find(std::initializer_list<const char*> names) const {
  for (const char* name : names) {
    if (void* const symbol = dlsym(library_, name)) return reinterpret_cast<Function>(symbol);
  }
  return nullptr;
}

NvidiaLibrary::ProcessList NvidiaLibrary::processList(const std::string& name) const {
  if (const auto get = find<nvml::GetProcesses>({(name + "_v3").c_str()})) {
    // Some drivers wrote longer records through the same function. They are those that know
    // protected memory, and not yet the function that was made for it afterwards.
    const bool isLonger = dlsym(library_, "nvmlDeviceGetConfComputeMemSizeInfo") != nullptr &&
                          dlsym(library_, "nvmlDeviceGetRunningProcessDetailList") == nullptr;
    return {get, isLonger ? nvml::kProcessProtected : nvml::kProcessV2};
  }
  if (const auto get = find<nvml::GetProcesses>({(name + "_v2").c_str()})) {
    return {get, nvml::kProcessV2};
  }
  return {find<nvml::GetProcesses>({name.c_str()}), nvml::kProcessV1};
}

void NvidiaLibrary::letGo() {
  if (isInitialised_ && shutdown_ != nullptr) shutdown_();
  isInitialised_ = false;
}

GpuAnswer NvidiaLibrary::ask() {
  constexpr int kNoLibrary = -1;
  if (init_ == nullptr || getCount_ == nullptr || getByIndex_ == nullptr) {
    return {.error = kNoLibrary};
  }
  if (!isInitialised_) {
    if (const nvml::Status status = init_(); status != nvml::kSuccess) return {.error = status};
    isInitialised_ = true;
  }
  std::uint32_t count = 0;
  if (const nvml::Status status = getCount_(&count); status != nvml::kSuccess) {
    return {.error = status};
  }
  GpuAnswer answer;
  count = std::min<std::uint32_t>(count, platform::kMostGpuCards);
  for (std::uint32_t index = 0; index < count; ++index) {
    nvml::Device device = nullptr;
    if (getByIndex_(index, &device) != nvml::kSuccess) continue;
    const auto card = this->card(device, index);
    if (!card) continue;
    answer.devices.push_back(*card);
    addUses(device, answer.devices.size() - 1, answer.uses);
  }
  return answer;
}

/// The card's id, name and capacity; none when it doesn't tell how much memory it has.
std::optional<GpuDevice> NvidiaLibrary::card(nvml::Device device, std::uint32_t index) const {
  GpuDevice card{.id = "nvidia" + std::to_string(index)};
  nvml::PciInfo place = {};
  if (getPciInfo_ != nullptr && getPciInfo_(device, &place) == nvml::kSuccess) {
    card.id = text::format("%04x:%02x:%02x.0", place.domain, place.bus, place.device);
  }
  std::array<char, 128> name = {};
  constexpr std::uint32_t kLongestName = 96;
  if (getName_ != nullptr && getName_(device, name.data(), kLongestName) == nvml::kSuccess) {
    name.back() = '\0';
    card.name = text::repairedUtf8(name.data());
  }

  nvml::Status status = nvml::kNotSupported;
  card.capacity = capacity(device, status);
  if (card.capacity || status == nvml::kSuccess || status == nvml::kNotSupported) return card;
  // Where a card is divided (MIG), only its parts may tell: their capacities are added up.
  GpuCapacity sum;
  for (const nvml::Device part : parts(device)) {
    if (const auto one = capacity(part, status)) {
      sum.totalBytes += one->totalBytes;
      sum.usedBytes += one->usedBytes;
    }
  }
  if (sum.totalBytes == 0) return std::nullopt;
  card.capacity = sum;
  return card;
}

/// None with success: the card's memory is the machine's.
std::optional<GpuCapacity> NvidiaLibrary::capacity(nvml::Device device,
                                                   nvml::Status& status) const {
  const auto told = [](std::uint64_t total, std::uint64_t used) -> std::optional<GpuCapacity> {
    if (total == 0) return std::nullopt;
    return GpuCapacity{total, std::min(used, total)};
  };
  if (getMemoryV2_ != nullptr) {
    nvml::MemoryV2 memory = {
        .version = nvml::kMemoryV2, .total = 0, .reserved = 0, .free = 0, .used = 0};
    status = getMemoryV2_(device, &memory);
    if (status == nvml::kSuccess) return told(memory.total, memory.used);
  }
  if (getMemory_ != nullptr) {
    nvml::Memory memory = {};
    status = getMemory_(device, &memory);
    if (status == nvml::kSuccess) return told(memory.total, memory.used);
  }
  return std::nullopt;
}

/// The parts that a card is divided into (MIG).
std::vector<nvml::Device> NvidiaLibrary::parts(nvml::Device device) const {
  constexpr std::uint32_t kMost = 64;
  std::vector<nvml::Device> parts;
  std::uint32_t count = 0;
  if (getMaxMigCount_ == nullptr || getMigDevice_ == nullptr ||
      getMaxMigCount_(device, &count) != nvml::kSuccess) {
    return parts;
  }
  for (std::uint32_t index = 0; index < std::min(count, kMost); ++index) {
    nvml::Device part = nullptr;
    if (getMigDevice_(device, index, &part) == nvml::kSuccess) parts.push_back(part);
  }
  return parts;
}

/// False when the list may not be read.
bool NvidiaLibrary::takeProcesses(const ProcessList& list, nvml::Device device,
                                  Records& records) const {
  constexpr std::uint32_t kMost = 16'384;
  constexpr int kMostTries = 4;  // it may grow while it is asked for
  std::uint32_t count = 0;
  nvml::Status status = list.get(device, &count, nullptr);
  std::vector<char> bytes;
  std::uint32_t capacity = 0;
  for (int i = 0; status == nvml::kInsufficientSize && i < kMostTries; ++i) {
    capacity = std::min(count, kMost) * 2 + 5;
    // Whatever record the driver has: it finds room for the longest.
    bytes.assign(capacity * nvml::kProcessProtected, '\0');
    count = capacity;
    status = list.get(device, &count, bytes.data());
  }
  if (status != nvml::kSuccess) return status != nvml::kNoPermission;

  for (std::size_t i = 0; i < std::min(count, capacity); ++i) {
    const char* const record = bytes.data() + i * list.recordSize;
    std::uint32_t pid = 0;
    std::uint64_t used = 0;
    std::array<std::uint32_t, 2> instance = {};
    std::memcpy(&pid, record, sizeof pid);
    std::memcpy(&used, record + nvml::kBytesOffset, sizeof used);
    if (list.recordSize > nvml::kProcessV1) {
      std::memcpy(instance.data(), record + nvml::kInstanceOffset, sizeof instance);
    }
    if (used == nvml::kUnknownBytes) continue;
    std::uint64_t& known = records[{pid, instance[0], instance[1]}];
    known = std::max(known, used);
  }
  return true;
}

void NvidiaLibrary::addUses(nvml::Device device, std::size_t place,
                            std::vector<GpuUse>& uses) const {
  Records records;
  for (const ProcessList& list : lists_) {
    if (takeProcesses(list, device, records)) continue;
    for (const nvml::Device part : parts(device)) takeProcesses(list, part, records);
  }
  std::map<std::uint32_t, std::uint64_t> byPid;
  for (const auto& [key, bytes] : records) {
    std::uint64_t& sum = byPid[std::get<0>(key)];
    sum += std::min(bytes, nvml::kUnknownBytes - sum);
  }
  for (const auto& [pid, bytes] : byPid) {
    if (pid == 0 || pid > 0x7FFFFFFF || bytes == 0) continue;
    uses.push_back({static_cast<std::int32_t>(pid), place, bytes, 0});
  }
}
