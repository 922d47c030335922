#include "ui/content_digest.h"

#define XXH_INLINE_ALL  // most fields are a few bytes
#include <xxhash.h>

#include <array>
#include <cstdio>
#include <string_view>
#include <type_traits>

#include "scanner/memory_units.h"
#include "text/random_seed.h"
#include "ui/status_tool_tip.h"

namespace {

/// Takes values apart by structured bindings, so that a new field does not compile until it is
/// looked at here.
class Digester {
 public:
  Digester() {
    static const std::uint64_t seed = text::randomSeed();
    XXH3_128bits_reset_withSeed(&state_, seed);
  }

  ContentDigest digest() const {
    const XXH128_hash_t hash = XXH3_128bits_digest(&state_);
    return {hash.low64, hash.high64};
  }

  template <typename... Values>
  void addAll(const Values&... values) {
    (add(values), ...);
  }

 private:
  template <typename Number>
  requires(std::is_arithmetic_v<Number> || std::is_enum_v<Number>) void add(Number number) {
    XXH3_128bits_update(&state_, &number, sizeof number);
  }
  void add(std::string_view text) {
    add(text.size());
    XXH3_128bits_update(&state_, text.data(), text.size());
  }
  void add(const std::string& text) { add(std::string_view(text)); }
  template <typename Value>
  void add(const std::optional<Value>& value) {
    add(value.has_value());
    if (value) add(*value);
  }
  template <typename Value>
  void add(const std::vector<Value>& values) {
    add(std::span<const Value>(values));
  }
  template <typename Value>
  void add(std::span<const Value> values) {
    add(values.size());
    for (const Value& value : values) add(value);
  }

  void add(const VordaProcess& process) {
    const auto& [pid, displayName, product, memMB, cpu, commandLine, labRole, matchedAgents,
                 isProtected, ownerName, identity, processesBelow, isCommandLineCut, startTime,
                 gpuMemory, family, leftBehindBy, mapped] = process;
    addAll(pid, displayName, product, memMB, cpu, commandLine, labRole, matchedAgents, isProtected,
           ownerName, identity, processesBelow, isCommandLineCut, startTime, gpuMemory, family,
           leftBehindBy, mapped);
  }
  void add(const GpuMemory& memory) {
    const auto& [memMB, shares] = memory;
    addAll(memMB, shares);
  }
  void add(const GpuMemory::Share& share) {
    const auto& [card, memMB] = share;
    addAll(card, memMB);
  }
  void add(const GpuCard& card) {
    const auto& [name, usedGB, totalGB] = card;
    addAll(name, usedGB, totalGB);
  }
  void add(const GpuSample& sample) {
    const auto& [cards, processes, unlisted] = sample;
    addAll(cards, processes, unlisted);
  }
  void add(const MappedMemory& memory) {
    const auto& [mappedMB, sharedMB, modelMB, files] = memory;
    addAll(mappedMB, sharedMB, modelMB, files);
  }
  void add(const MappedMemory::File& file) {
    const auto& [name, memMB, isModel] = file;
    addAll(name, memMB, isModel);
  }
  /// When the manager was asked for the pid is shown nowhere.
  void add(const VordaLaunchAgent& launchAgent) {
    const auto& [label, plistPath, program, keepAlive, loaded, pid, pidAskedAt] = launchAgent;
    addAll(label, plistPath, program, keepAlive, loaded, pid);
    static_cast<void>(pidAskedAt);
  }
  void add(const LaunchAgentOperation& operation) {
    addAll(operation.label(), operation.kind(), operation.outcome().has_value());
  }
  void add(const MenuArrangement& arrangement) {
    const auto& [sortBy, isWhole, foldsFamilies, wholeSections] = arrangement;
    addAll(sortBy, isWhole, foldsFamilies, wholeSections.size());
    for (const std::string& section : wholeSections) add(section);
  }
  /// Rounded as menu and tooltip show it. A smaller change of `usedGB` shows only in the strip's
  /// pressure, which needs no new menu.
  void add(const SystemMemory::Snapshot& sys) {
    const auto& [usedGB, totalGB, freeGB, isLimit, availableGB, swappedGB, stalls] = sys;
    addAll(totalGB, isLimit);
    addRounded("%.1f", usedGB);
    addRounded("%.0f", swappedGB.value_or(0) * kMBPerGB);
    const platform::MemoryStalls shown = stalls.value_or(platform::MemoryStalls{});
    add(shown.some >= StatusToolTip::kLeastStalled);
    if (shown.some >= StatusToolTip::kLeastStalled) {
      addRounded("%.0f", shown.some);
      addRounded("%.0f", shown.full);
    }
    static_cast<void>(freeGB);
    static_cast<void>(availableGB);
  }
  void addRounded(const char* format, double value) {
    std::array<char, 64> shown{};
    std::snprintf(shown.data(), shown.size(), format, value);
    add(std::string_view(shown.data()));
  }

  XXH3_state_t state_{};
};

}  // namespace

ContentDigest digestOf(const MenuContent& content) {
  const auto& [processes, launchAgents, sys, quits, launchAgentOperations, gpus, unlistedMembers,
               arrangement] = content;
  Digester digester;
  digester.addAll(processes, launchAgents, sys, launchAgentOperations, unlistedMembers);
  digester.addAll(gpus != nullptr, arrangement != nullptr);
  if (gpus != nullptr) digester.addAll(*gpus);
  if (arrangement != nullptr) digester.addAll(*arrangement);
  static_cast<void>(quits);
  return digester.digest();
}
