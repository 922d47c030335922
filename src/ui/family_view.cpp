#include "ui/family_view.h"

#include <algorithm>

#include "text/display_line.h"
#include "ui/name_limits.h"

namespace {

/// The head, then the largest first.
void sortMembers(FamilyView& family) {
  std::ranges::stable_sort(family.members, [&family](const auto* a, const auto* b) {
    const bool aIsHead = a->pid == family.head;
    const bool bIsHead = b->pid == family.head;
    return aIsHead != bIsHead ? aIsHead : a->memMB > b->memMB;
  });
}

}  // namespace

const VordaProcess& FamilyView::main() const {
  const VordaProcess& first = *members.front();
  if (first.labRole != LabRole::none) return first;
  const auto known = std::ranges::find_if(
      members, [](const auto* process) { return process->labRole != LabRole::none; });
  return known == members.end() ? first : **known;
}

FamilyViews::FamilyViews(std::span<const VordaProcess> listed,
                         std::span<const VordaProcess> unlisted,
                         std::span<const VordaProcess> onlyOnGpus) {
  for (const auto list : {listed, unlisted, onlyOnGpus}) {
    for (const VordaProcess& process : list) {
      if (!process.family) continue;
      FamilyView& family = families_[*process.family];
      family.head = *process.family;
      family.members.push_back(&process);
      family.memMB += process.memMB;
    }
  }
  std::erase_if(families_, [](const auto& entry) { return entry.second.members.size() < 2; });
  for (auto& [head, family] : families_) {
    sortMembers(family);
    family.name =
        NameLimits::cut(text::displayName(family.main().displayName), NameLimits::kProcessName);
  }
}

const FamilyView* FamilyViews::headedBy(std::int32_t head) const {
  const auto found = families_.find(head);
  return found == families_.end() ? nullptr : &found->second;
}

const FamilyView* FamilyViews::of(const VordaProcess& process) const {
  return process.family ? headedBy(*process.family) : nullptr;
}
