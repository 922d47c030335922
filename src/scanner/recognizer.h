#pragma once

#include <optional>
#include <string_view>

#include "scanner/command_line/invocation.h"
#include "scanner/lab_role.h"
#include "scanner/process_scanner.h"
#include "scanner/roles/product_lookup.h"

/// Recognises a command line: decides which role the process has and what it is called, from who
/// runs, whose words these are and what it does; where none of that says anything, from the word
/// rules (roles/role_by_words.h, naming/friendly_naming.h). Pure, and linear in the line.
namespace recognition {

/// What the rules and the recognition together say of a process.
struct Verdict {
  LabRole role = LabRole::none;
  LabRole byRules = LabRole::none;  ///< what the rules alone had said
  /// None: the rules name the process.
  std::optional<ProcessScanner::FriendlyName> name = std::nullopt;
  /// It only waits for the program that it has started. If that has the role as well, this one
  /// loses it (waiting_launchers.h).
  bool waits = false;
  /// For Ollama's own runners the path of the model's blob, as it stands in the arguments: which
  /// model that is, a manifest tells (ollama_models.h). "" for all others.
  std::string_view blob = {};
};

/// What a process with these arguments is, none of which is empty. `exe`: the last path component
/// of its executable's name in lower case, as the rules were given it; `byRules`: the role that
/// they gave. `products`: the table of known products.
Verdict verdictOn(std::string_view exe, Arguments arguments, LabRole byRules,
                  const Products& products = Products::known());

}  // namespace recognition
