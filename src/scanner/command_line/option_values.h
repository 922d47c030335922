#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "scanner/command_line/invocation.h"

namespace ProcessScanner {

/// How the word rules read an option: ProcessScanner::flag (process_scanner.h) for views. The value
/// points into its argument.
std::optional<std::string_view> optionValue(std::span<const std::string_view> arguments,
                                            std::span<const std::string_view> names);

}  // namespace ProcessScanner

// How the recognizer reads one.
namespace recognition {

/// The arguments in which a model, a recipe or a port is looked for: more than anybody writes by
/// hand are not searched.
Arguments lookedAt(const Invocation& invocation);

/// The value of the first argument that is one of `options` (words with blanks between them), as
/// written or normalized: "--option value" or "--option=value". Never empty, and no other option.
std::optional<std::string_view> valueOf(Arguments arguments, std::string_view options);

/// Whether one of `options` is given, with or without a value. They are written normalized.
bool hasOption(const Invocation& invocation, std::string_view options);

}  // namespace recognition
