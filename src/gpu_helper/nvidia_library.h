#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "gpu_helper/nvml.h"
#include "platform/linux/gpu_answer.h"

/// NVIDIA's management library, loaded.
class NvidiaLibrary {
 public:
  /// Where it can't be loaded, every answer says so.
  explicit NvidiaLibrary(const char* path);
  ~NvidiaLibrary();
  NvidiaLibrary(const NvidiaLibrary&) = delete;
  NvidiaLibrary& operator=(const NvidiaLibrary&) = delete;

  /// Of every card that answers: how much memory it has, and who holds it. Initialises the
  /// library where it is not yet. What one card or one function of the driver refuses does not
  /// keep the rest from being told.
  platform::GpuAnswer ask();

  /// Lets go of the driver, until the next ask().
  void letGo();

 private:
  /// Bytes by pid and instance of a divided card (MIG): the same process can be in several lists.
  using Records = std::map<std::tuple<std::uint32_t, std::uint32_t, std::uint32_t>, std::uint64_t>;

  struct ProcessList {
    nvml::GetProcesses get = nullptr;
    std::size_t recordSize = 0;
  };

  template <typename Function>
  Function find(std::initializer_list<const char*> names) const;
  ProcessList processList(const std::string& name) const;
  std::optional<platform::GpuDevice> card(nvml::Device device, std::uint32_t index) const;
  std::vector<nvml::Device> parts(nvml::Device device) const;
  std::optional<platform::GpuCapacity> capacity(nvml::Device device, nvml::Status& status) const;
  bool takeProcesses(const ProcessList& list, nvml::Device device, Records& records) const;
  void addUses(nvml::Device device, std::size_t place, std::vector<platform::GpuUse>& uses) const;

  void* library_ = nullptr;
  bool isInitialised_ = false;
  nvml::Init init_ = nullptr;
  nvml::Shutdown shutdown_ = nullptr;
  nvml::GetCount getCount_ = nullptr;
  nvml::GetByIndex getByIndex_ = nullptr;
  nvml::GetPciInfo getPciInfo_ = nullptr;
  nvml::GetName getName_ = nullptr;
  nvml::GetMemory getMemory_ = nullptr;
  nvml::GetMemoryV2 getMemoryV2_ = nullptr;
  nvml::GetMaxMigCount getMaxMigCount_ = nullptr;
  nvml::GetMigDevice getMigDevice_ = nullptr;
  std::vector<ProcessList> lists_;
};
