#include "ui/shown_pids.h"

#include <algorithm>
#include <array>
#include <optional>
#include <set>

#include "ui/family_rows.h"
#include "ui/menu_limits.h"
#include "ui/menu_sections.h"

using MenuConstruction::kRoleHeaders;
using MenuConstruction::kTopHeaders;
using MenuConstruction::limitOf;

std::span<const std::int32_t> ShownPids::of(const std::vector<VordaProcess>& processes,
                                            const std::vector<VordaProcess>& unlistedMembers,
                                            const MenuArrangement& arrangement,
                                            std::span<const std::int32_t> more) {
  const SortBy sortBy = arrangement.sortBy;
  std::optional<ShownFamilies> families;
  if (arrangement.foldsFamilies) {
    families.emplace(processes, unlistedMembers, std::span<const VordaProcess>());
  }
  const ShownFamilies* const folded = families ? &*families : nullptr;
  inOrder_.clear();
  for (const VordaProcess& process : processes) inOrder_.push_back(&process);
  // Like the stable sorts of a menu, which would allocate.
  std::ranges::sort(inOrder_, [sortBy, folded](const VordaProcess* a, const VordaProcess* b) {
    if (comesBefore(*a, *b, sortBy)) return true;
    if (comesBefore(*b, *a, sortBy)) return false;
    const double rowA = memoryOfRow(*a, folded);
    const double rowB = memoryOfRow(*b, folded);
    if (rowA != rowB) return rowA > rowB;
    return a->memMB != b->memMB ? a->memMB > b->memMB : a < b;
  });

  // Who holds most of cards' memory isn't known before all have been asked.
  const bool isAnybodys = sortBy == SortBy::gpu;
  const auto limit = [&](std::span<const char* const> headers, std::size_t usual) {
    return isAnybodys ? processes.size() : limitOf(headers, usual, &arrangement);
  };
  struct Section {
    std::size_t left = 0;                   ///< rows that it may still have
    std::set<const ShownFamily*> families;  ///< those that have one
  };
  Section top{limit(kTopHeaders, MenuLimits::kMaxTopRAM), {}};
  constexpr std::size_t kRoles = kRoleHeaders.size() + 1;  // or none
  std::array<Section, kRoles> ofRoles;
  for (const auto& [role, header] : kRoleHeaders) {
    ofRoles.at(static_cast<std::size_t>(role)).left = limit({&header, 1}, MenuLimits::kMaxAI);
  }
  const auto isIn = [folded](Section& section, const VordaProcess& process) {
    const ShownFamily* const family = folded == nullptr ? nullptr : folded->of(process);
    if (family != nullptr && section.families.contains(family)) return true;
    if (section.left == 0) return false;
    --section.left;
    if (family != nullptr) section.families.insert(family);
    return true;
  };
  pids_.assign(more.begin(), more.end());
  for (const VordaProcess* process : inOrder_) {
    const bool isInTop = isIn(top, *process);
    const bool isInItsRoles =
        isIn(ofRoles.at(static_cast<std::size_t>(process->labRole)), *process);
    if (isInTop || isInItsRoles) pids_.push_back(process->pid);
  }
  std::ranges::sort(pids_);
  pids_.erase(std::unique(pids_.begin(), pids_.end()), pids_.end());
  return pids_;
}
