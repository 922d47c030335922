#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>
#include <span>
#include <utility>

#include "scanner/lab_role.h"
#include "ui/menu_arrangement.h"

/// The menu's sections: what stands above each, and how many rows it has. How the whole is put
/// together: menu_construction.cpp.
namespace MenuConstruction {

/// What stands above a section's rows.
///@{
inline constexpr const char* kTopHeader = "— Top RAM (colors match graph) —";
inline constexpr const char* kTopGpuHeader = "— Top GPU —";
inline constexpr const char* kTrainingHeader = "— Training & fine-tunes (LoRA, SFT, …) —";
inline constexpr const char* kServersHeader = "— Model servers —";
inline constexpr const char* kToolsHeader = "— Agents & tools —";
inline constexpr const char* kLaunchAgentsHeader = "— Auto-start agents —";
///@}
/// The beginnings of the summary's lines that add up a section.
///@{
inline constexpr const char* kLargestSummary = "Largest ";
inline constexpr const char* kLargestOnGpuSummary = "Largest on GPU  ";
inline constexpr const char* kTrainingSummary = "Training / fine-tunes";
inline constexpr const char* kServersSummary = "Model servers";
///@}

/// What stands above the section that lists everybody, in the order of SortBy's values.
inline constexpr std::array kTopHeaders{kTopHeader, "— By GPU memory (colors match graph) —",
                                        "— By name (colors match graph) —",
                                        "— By start, the latest first (colors match graph) —"};

/// The sections that are a role's alone.
inline constexpr std::array kRoleHeaders{std::pair{LabRole::training, kTrainingHeader},
                                         std::pair{LabRole::inference, kServersHeader},
                                         std::pair{LabRole::agent, kToolsHeader}};

/// How many rows a section has, which is cut after `limit` unless somebody wants all of it.
/// `headers`: all that it may have.
inline std::size_t limitOf(std::span<const char* const> headers, std::size_t limit,
                           const MenuArrangement* arrangement) {
  const bool isWhole =
      arrangement != nullptr &&
      (arrangement->isWhole || std::ranges::any_of(headers, [arrangement](const char* header) {
         return arrangement->wholeSections.contains(header);
       }));
  return isWhole ? std::numeric_limits<std::size_t>::max() : limit;
}

}  // namespace MenuConstruction
