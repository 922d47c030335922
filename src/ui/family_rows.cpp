#include "ui/family_rows.h"

#include <algorithm>

#include "scanner/memory_format.h"
#include "text/display_line.h"
#include "ui/menu_builders.h"
#include "ui/menu_limits.h"
#include "ui/name_limits.h"
#include "ui/row_glyphs.h"

namespace {

using MenuBuilders::command;
using MenuBuilders::label;
using MenuBuilders::named;
using MenuBuilders::separator;

/// "Runs as 13 processes  ·  up to 1.9 GB", until it is known how much the user's own of them hold.
MenuItem memoryLine(const ShownFamily& family, std::size_t own) {
  const std::size_t all = family.members.size();
  LiveTitle live{
      .beginning = "Runs as " + std::to_string(all) + " processes" + RowGlyphs::kSeparator,
      .ending = own == all ? "" : " in your own " + std::to_string(own)};
  live.title = live.beginning + "up to " + MemoryFormat::inSentence(family.memMB);
  for (const VordaProcess* member : family.members) {
    if (!member->isProtected) live.processes.push_back({member->pid, member->identity});
  }
  MenuItem line = label(live.title);
  line.live = std::make_shared<LiveTitle>(std::move(live));
  return line;
}

/// The head, then the largest first.
void sortMembers(ShownFamily& family) {
  std::ranges::stable_sort(family.members, [&family](const auto* a, const auto* b) {
    const bool aIsHead = a->pid == family.head;
    const bool bIsHead = b->pid == family.head;
    return aIsHead != bIsHead ? aIsHead : a->memMB > b->memMB;
  });
}

}  // namespace

const VordaProcess& ShownFamily::main() const {
  const VordaProcess& first = *members.front();
  if (first.labRole != LabRole::none) return first;
  const auto known = std::ranges::find_if(
      members, [](const auto* process) { return process->labRole != LabRole::none; });
  return known == members.end() ? first : **known;
}

ShownFamilies::ShownFamilies(std::span<const VordaProcess> listed,
                             std::span<const VordaProcess> unlisted,
                             std::span<const VordaProcess> onlyOnGpus) {
  for (const auto list : {listed, unlisted, onlyOnGpus}) {
    for (const VordaProcess& process : list) {
      if (!process.family) continue;
      ShownFamily& family = families_[*process.family];
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

const ShownFamily* ShownFamilies::headedBy(std::int32_t head) const {
  const auto found = families_.find(head);
  return found == families_.end() ? nullptr : &found->second;
}

const ShownFamily* ShownFamilies::of(const VordaProcess& process) const {
  return process.family ? headedBy(*process.family) : nullptr;
}

void setFairShares(LiveTitle& live, const FairShareInquiry::Shares& shares) {
  double sum = 0;
  for (const auto& share : shares) {
    if (!share) return;
    sum += *share;
  }
  live.title = live.beginning + MemoryFormat::inSentence(sum) + live.ending;
  live.isKnown = true;
}

double memoryOfRow(const VordaProcess& process, const ShownFamilies* folded) {
  const ShownFamily* const family = folded == nullptr ? nullptr : folded->of(process);
  return family == nullptr ? process.memMB : family->memMB;
}

const FamilyEntries* FamilyItems::of(const VordaProcess& process) {
  const ShownFamily* const family = families_.of(process);
  if (family == nullptr) return nullptr;
  const auto [entries, isNew] = made_.try_emplace(family->head);
  if (isNew) entries->second = entriesOf(*family);
  return &entries->second;
}

MenuItem FamilyItems::folded(const VordaProcess& process) {
  const ShownFamily* const family = families_.of(process);
  if (family == nullptr) return makeRow_(process, nullptr);
  const VordaProcess& main = family->main();
  MenuItem row = makeRow_(main, of(main));
  MenuItem title = named(main.labRole == LabRole::none ? "" : RowGlyphs::kWorkload, family->name,
                         "  (" + std::to_string(family->members.size()) + ")" +
                             RowGlyphs::kSeparator + MemoryFormat::compact(family->memMB));
  row.title = std::move(title.title);
  row.name = title.name;
  return row;
}

FamilyEntries FamilyItems::entriesOf(const ShownFamily& family) const {
  const std::string count = std::to_string(family.members.size());
  std::vector<MenuItem> members;
  std::size_t own = 0;
  for (const VordaProcess* member : family.members) {
    if (!member->isProtected) ++own;
    if (members.size() < MenuLimits::kMaxFamilyMembers)
      members.push_back(makeRow_(*member, nullptr));
  }
  if (family.members.size() > MenuLimits::kMaxFamilyMembers) {
    members.push_back(label(
        "and " + std::to_string(family.members.size() - MenuLimits::kMaxFamilyMembers) + " more"));
  }

  FamilyEntries entries{.toolTip = "One of " + count + " of " + family.name};
  entries.items.push_back(separator());
  entries.items.push_back(memoryLine(family, own));
  entries.items.push_back(command("Its " + count + " processes…", Action::openRow));
  entries.items.back().opens = std::make_shared<const std::vector<MenuItem>>(std::move(members));
  if (own > 1) {
    const std::string all = "Quit all " + std::to_string(own) + "…";
    entries.items.push_back(command(all, Action::quitFamily, family.head));
    entries.items.push_back(command("Force " + all, Action::forceFamily, family.head));
  }
  return entries;
}

std::string leftBehindLine(const VordaProcess& process) {
  if (!process.leftBehindBy) return {};
  return "Left behind: pid " + std::to_string(*process.leftBehindBy) +
         ", which started it, has ended";
}
