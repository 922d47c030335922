#pragma once

#include <cstddef>
#include <cstdint>

/// The few functions and records of NVIDIA's management library that are called here, as its
/// public documentation describes them. It is loaded when the program runs.
namespace nvml {

/// What every function answers.
using Status = int;
inline constexpr Status kSuccess = 0;
inline constexpr Status kNotSupported = 3;
inline constexpr Status kNoPermission = 4;
inline constexpr Status kInsufficientSize = 7;

/// A card, as the library hands it out.
using Device = void*;

/// The first fields of every version of the record of a place on the PCI bus; what follows them
/// differs.
struct PciInfo {
  char busIdLegacy[16];
  std::uint32_t domain;
  std::uint32_t bus;
  std::uint32_t device;
  std::uint32_t rest[16];  ///< more than any version has
};

/// A card's memory in bytes.
///@{
struct Memory {
  std::uint64_t total;
  std::uint64_t free;
  std::uint64_t used;
};
struct MemoryV2 {
  std::uint32_t version;  ///< kMemoryV2
  std::uint64_t total;
  std::uint64_t reserved;
  std::uint64_t free;
  std::uint64_t used;
};
inline constexpr std::uint32_t kMemoryV2 = sizeof(MemoryV2) | 2U << 24;
///@}

/// How a list of processes is laid out: the pid (32 bits) stands at the start of each record and
/// the bytes (64 bits) at 8, in every version.
///@{
inline constexpr std::size_t kProcessV1 = 16;
inline constexpr std::size_t kProcessV2 = 24;  ///< also version 3; two 32-bit instance ids at 16
inline constexpr std::size_t kProcessProtected = 32;  ///< with 64 bits of protected memory behind
inline constexpr std::size_t kBytesOffset = 8;
inline constexpr std::size_t kInstanceOffset = 16;
///@}
inline constexpr std::uint64_t kUnknownBytes = ~std::uint64_t{0};

using Init = Status (*)();
using Shutdown = Status (*)();
using GetCount = Status (*)(std::uint32_t* count);
using GetByIndex = Status (*)(std::uint32_t index, Device* device);
using GetPciInfo = Status (*)(Device device, PciInfo* info);
using GetName = Status (*)(Device device, char* name, std::uint32_t length);
using GetMemory = Status (*)(Device device, Memory* memory);
using GetMemoryV2 = Status (*)(Device device, MemoryV2* memory);
using GetProcesses = Status (*)(Device device, std::uint32_t* count, void* records);
using GetMaxMigCount = Status (*)(Device device, std::uint32_t* count);
using GetMigDevice = Status (*)(Device device, std::uint32_t index, Device* part);

}  // namespace nvml
