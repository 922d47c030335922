#include "platform/linux/drm_cards.h"

#include <algorithm>
#include <map>
#include <string_view>

#include "text/decimal.h"
#include "text/split.h"
#include "text/unicode.h"

namespace platform {
namespace {

/// The value of "KEY=value" among the lines of a uevent file.
std::string ueventValue(std::string_view lines, std::string_view key) {
  while (!lines.empty()) {
    const std::string_view line = text::takeUntil('\n', lines);
    if (line.size() > key.size() && line.starts_with(key) && line[key.size()] == '=') {
      return std::string(line.substr(key.size() + 1));
    }
  }
  return {};
}

std::optional<DrmCard::Node> nodeOf(std::string_view numbers) {
  const auto colon = numbers.find(':');
  if (colon == std::string_view::npos) return std::nullopt;
  const auto majorNumber = text::decimal<std::uint32_t>(numbers.substr(0, colon));
  const auto minorNumber = text::decimal<std::uint32_t>(numbers.substr(colon + 1));
  if (!majorNumber || !minorNumber) return std::nullopt;
  return DrmCard::Node{*majorNumber, *minorNumber};
}

std::string pathOf(const std::string& folder, const std::string& name) {
  std::string path = folder;
  return path.append("/").append(name);
}

std::optional<GpuCapacity> capacityOf(const FileTree& sys, const std::string& device) {
  const auto total = sys.number(device + "/mem_info_vram_total");
  const auto used = sys.number(device + "/mem_info_vram_used");
  if (!total || *total == 0 || !used) return std::nullopt;
  return GpuCapacity{*total, std::min(*used, *total)};
}

void addNodes(const FileTree& sys, const std::string& folder,
              std::initializer_list<std::string_view> prefixes,
              std::map<std::string, DrmCard>& cards) {
  for (const std::string& name : sys.names(folder)) {
    // Beside the cards stand their connectors: "card0-DP-1".
    if (std::ranges::none_of(prefixes, [&](std::string_view prefix) {
          return numberAfter(prefix, name).has_value();
        })) {
      continue;
    }
    const std::string node = pathOf(folder, name);
    const std::string device = node + "/device";
    const auto numbers = nodeOf(sys.line(node + "/dev"));
    if (!numbers) continue;
    const std::string uevent = sys.text(device + "/uevent").value_or("");
    std::string id = ueventValue(uevent, "PCI_SLOT_NAME");
    if (id.empty()) id = ueventValue(uevent, "OF_FULLNAME");
    if (id.empty()) id = node;

    const auto [place, isNew] = cards.try_emplace(text::repairedUtf8(id));
    DrmCard& card = place->second;
    card.nodes.push_back(*numbers);
    card.computes = card.computes || !name.starts_with("card");
    if (!isNew) continue;
    card.id = place->first;
    card.driver = ueventValue(uevent, "DRIVER");
    card.name = text::repairedUtf8(sys.line(device + "/product_name"));
    card.sleeps = isAsleep(sys, device);
    if (!card.sleeps) card.capacity = capacityOf(sys, device);
  }
}

/// The compute driver's numbers of cards, and which of `cards` they are.
std::map<std::uint64_t, std::size_t> kfdNumbers(const FileTree& sys,
                                                const std::vector<DrmCard>& cards) {
  std::map<std::uint64_t, std::size_t> numbers;
  const std::string folder = "class/kfd/kfd/topology/nodes";
  for (const std::string& name : sys.names(folder)) {
    const std::string node = pathOf(folder, name);
    const auto number = sys.number(node + "/gpu_id");
    if (!number || *number == 0) continue;  // 0: a processor
    const std::string properties = sys.text(node + "/properties").value_or("");
    constexpr std::string_view kKey = "drm_render_minor ";
    const auto at = properties.find(kKey);
    if (at == std::string::npos) continue;
    const std::string_view rest = std::string_view(properties).substr(at + kKey.size());
    const auto minorNumber = text::decimal<std::uint64_t>(rest.substr(0, rest.find('\n')));
    for (std::size_t card = 0; minorNumber && card < cards.size(); ++card) {
      for (const DrmCard::Node& one : cards[card].nodes) {
        if (one.majorNumber == kDrmMajor && one.minorNumber == *minorNumber) {
          numbers.emplace(*number, card);
        }
      }
    }
  }
  return numbers;
}

}  // namespace

bool isAsleep(const FileTree& sys, const std::string& device) {
  const std::string status = sys.line(device + "/power/runtime_status");
  return status == "suspended" || status == "suspending";
}

std::vector<DrmCard> drmCards(const FileTree& sys) {
  std::map<std::string, DrmCard> byId;
  addNodes(sys, "class/drm", {"card", "renderD"}, byId);
  addNodes(sys, "class/accel", {"accel"}, byId);
  std::vector<DrmCard> cards;
  cards.reserve(byId.size());
  for (auto& [id, card] : byId) cards.push_back(std::move(card));
  return cards;
}

CardUses kfdUses(const FileTree& sys, const std::vector<DrmCard>& cards) {
  CardUses uses;
  const std::string folder = "class/kfd/kfd/proc";
  const std::vector<std::string> processes = sys.names(folder);
  if (processes.empty()) return uses;
  for (const auto& [number, card] : kfdNumbers(sys, cards)) {
    if (cards[card].sleeps) continue;
    for (const std::string& name : processes) {
      const auto pid = text::decimal<std::int32_t>(name);
      if (!pid || *pid <= 0) continue;
      const auto bytes =
          sys.number(pathOf(folder, name).append("/vram_").append(std::to_string(number)));
      if (bytes.value_or(0) == 0) continue;
      uses[{*pid, card}] += *bytes;
    }
  }
  return uses;
}

}  // namespace platform
