#include "platform/linux/drm_fdinfo.h"

#include <algorithm>
#include <array>
#include <limits>
#include <vector>

#include "platform/linux/trimmed.h"
#include "text/decimal.h"
#include "text/split.h"

namespace platform {
namespace {

/// "544428 KiB", "5 MiB", "0".
std::optional<std::uint64_t> bytesIn(std::string_view value) {
  struct Unit {
    std::string_view name;
    std::uint64_t bytes;
  };
  constexpr std::array kUnits{Unit{"", 1}, Unit{"B", 1}, Unit{"KiB", 1ULL << 10},
                              Unit{"MiB", 1ULL << 20}, Unit{"GiB", 1ULL << 30}};
  const auto digits = std::min(value.find_first_not_of("0123456789"), value.size());
  const auto number = text::decimal<std::uint64_t>(value.substr(0, digits));
  const std::string_view name = trimmed(value.substr(digits));
  const auto unit = std::ranges::find(kUnits, name, &Unit::name);
  if (!number || unit == kUnits.end() ||
      *number > std::numeric_limits<std::uint64_t>::max() / unit->bytes) {
    return std::nullopt;
  }
  return *number * unit->bytes;
}

/// One region of memory. A driver may tell the same memory under several of these keys.
struct Region {
  std::string_view name;
  std::optional<std::uint64_t> resident;
  std::optional<std::uint64_t> memory;
  std::optional<std::uint64_t> total;

  std::optional<std::uint64_t> bytes() const {
    return resident ? resident : memory ? memory : total;
  }
};

bool isNumbered(std::string_view name, std::string_view prefix) {
  return name.starts_with(prefix) &&
         name.find_first_not_of("0123456789", prefix.size()) == std::string_view::npos;
}

/// Whether a region is the card's own memory; all others are RAM.
bool isOnCard(std::string_view region, std::string_view driver) {
  return isNumbered(region, "vram") || isNumbered(region, "local") ||
         (region == "memory" && driver == "panthor");
}

std::uint64_t sum(std::uint64_t a, std::uint64_t b) {
  return a > std::numeric_limits<std::uint64_t>::max() - b
             ? std::numeric_limits<std::uint64_t>::max()
             : a + b;
}

class Regions {
 public:
  /// `key` is what stands behind "drm-": "resident-vram".
  void take(std::string_view key, std::string_view value) {
    constexpr std::array<std::pair<std::string_view, std::optional<std::uint64_t> Region::*>, 3>
        kFigures{{{"resident-", &Region::resident},
                  {"memory-", &Region::memory},
                  {"total-", &Region::total}}};
    for (const auto& [prefix, figure] : kFigures) {
      if (!key.starts_with(prefix)) continue;
      if (Region* region = of(key.substr(prefix.size()))) region->*figure = bytesIn(value);
      return;
    }
  }

  std::optional<std::uint64_t> cardBytes(std::string_view driver) const {
    std::optional<std::uint64_t> bytes;
    for (const Region& region : regions_) {
      if (!isOnCard(region.name, driver)) continue;
      if (const auto more = region.bytes()) bytes = sum(bytes.value_or(0), *more);
    }
    return bytes;
  }

 private:
  Region* of(std::string_view name) {
    constexpr std::size_t kMost = 32;  // a card has a handful
    const auto known = std::ranges::find(regions_, name, &Region::name);
    if (known != regions_.end()) return &*known;
    if (regions_.size() == kMost) return nullptr;
    return &regions_.emplace_back(Region{.name = name});
  }

  std::vector<Region> regions_;
};

}  // namespace

std::optional<DrmClient> drmClient(std::string_view fdinfo) {
  DrmClient client;
  Regions regions;
  while (!fdinfo.empty()) {
    const std::string_view line = trimmed(text::takeUntil('\n', fdinfo));
    constexpr std::string_view kPrefix = "drm-";
    const auto colon = line.find(':');
    if (!line.starts_with(kPrefix) || colon == std::string_view::npos) continue;
    const std::string_view key = line.substr(kPrefix.size(), colon - kPrefix.size());
    const std::string_view value = trimmed(line.substr(colon + 1));
    if (key == "driver") {
      client.driver = value;
    } else if (key == "pdev") {
      client.device = value;
    } else if (key == "client-id") {
      client.id = text::decimal<std::uint64_t>(value);
    } else {
      regions.take(key, value);
    }
  }
  if (client.driver.empty()) return std::nullopt;
  client.cardBytes = regions.cardBytes(client.driver);
  return client;
}

}  // namespace platform
