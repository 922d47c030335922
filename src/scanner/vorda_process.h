#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "scanner/lab_role.h"

/// What one process holds of graphics cards' memory. Never part of its footprint.
struct GpuMemory {
  /// Of one card.
  struct Share {
    std::string card;  ///< what the card is called, as in GpuCard
    double memMB = 0;  ///< in MiB

    bool operator==(const Share&) const = default;
  };

  double memMB = 0;           ///< of all cards together, in MiB
  std::vector<Share> shares;  ///< by card; not empty

  bool operator==(const GpuMemory&) const = default;
};

/// What one process uses of memory that others may use, too, where that is a lot. Never part of
/// its footprint.
struct MappedMemory {
  struct File {
    std::string name;  ///< the last part of its path, credentials masked
    double memMB = 0;  ///< as much as is mapped, in MiB
    bool isModel = false;

    bool operator==(const File&) const = default;
  };

  double mappedMB = 0;  ///< pages of mapped files in memory, in MiB; 0: not worth a word
  double sharedMB = 0;  ///< shared memory, in MiB; 0: not worth a word
  /// Of mappedMB, as much as may be a model's; 0 where the largest file is none.
  double modelMB = 0;
  std::vector<File> files;  ///< the largest first, at most 3; empty where that isn't known

  bool operator==(const MappedMemory&) const = default;
};

/// One sampled process, as the menu shows it. A plain value. Two samples of one process whose
/// memory has changed are different values with the same id().
struct VordaProcess {
  std::int32_t pid = 0;                    ///< its process id
  std::string displayName;                 ///< the readable name
  std::string product;                     ///< the product word, which groups colours
  double memMB = 0;                        ///< physical footprint in MiB
  double cpu = 0;                          ///< always 0: CPU is not sampled
  std::string commandLine;                 ///< joined by single spaces, secrets redacted;
                                           ///< at most 8 KiB
  LabRole labRole = LabRole::none;         ///< what it does in AI work
  std::vector<std::string> matchedAgents;  ///< labels of the launch agents running as this pid
  bool isProtected = false;                ///< owned by another user than the program's own
  std::string ownerName;                   ///< login name, else "uid " and the number

  /// platform::ProcessFacts::identity: no other process with this pid has the same. None when
  /// unknown; then the process is never signalled.
  std::optional<std::uint64_t> identity = std::nullopt;
  std::size_t processesBelow = 0;  ///< its children, their children, and so on
  bool isCommandLineCut = false;   ///< the process has more arguments than `commandLine` holds
  /// platform::ProcessFacts::startTime.
  std::optional<std::uint64_t> startTime = std::nullopt;
  /// What it holds of graphics cards' memory; none when it holds nothing, or that isn't known.
  std::optional<GpuMemory> gpuMemory = std::nullopt;
  /// The pid of its family's head, which may be its own; none when it belongs to no family.
  /// Processes with the same one are a family (ui/family_rows.h).
  std::optional<std::int32_t> family = std::nullopt;
  /// The pid of the process that started it, or its family, when that was seen and has ended.
  std::optional<std::int32_t> leftBehindBy = std::nullopt;
  /// What it has mapped and shares; none where that is not worth a word.
  std::optional<MappedMemory> mapped = std::nullopt;

  /// The same from one sample to the next.
  std::int32_t id() const { return pid; }

  /// The ten fields that are shown, from `pid` to `ownerName`, in this order.
  bool operator==(const VordaProcess& other) const;
};

/// For sets and maps of processes.
template <>
struct std::hash<VordaProcess> {
  /// Over the fields that operator== compares, so that equal values hash equally.
  std::size_t operator()(const VordaProcess& process) const noexcept;
};
