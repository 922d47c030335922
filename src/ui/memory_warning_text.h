#pragma once

#include <optional>
#include <string>

#include "scanner/system_memory.h"
#include "ui/memory_warning_rule.h"

/// What the user is told, without having asked, when memory is short.
struct MemoryWarning {
  std::string title;  ///< the program's own words
  std::string text;   ///< one line; a part of it is a name that somebody else chose
  std::optional<ProcessReference> process;  ///< whose row it is about

  bool operator==(const MemoryWarning&) const = default;
};

/// The words for it.
MemoryWarning memoryWarning(const MemoryWarningRule::Warning& warning,
                            const SystemMemory::Snapshot& sys);
