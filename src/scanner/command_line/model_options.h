#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "scanner/command_line/invocation.h"

namespace ProcessScanner {

/// For the word rules alone: the model that one of the options `names` gives (optionValue()). These
/// rules have short lists of options of their own (training_naming.cpp, friendly_naming.cpp).
/// Python's own "-m MODULE" is no model, so for a Python interpreter only what follows the module
/// counts.
std::optional<std::string_view> modelOption(std::span<const std::string_view> arguments,
                                            std::span<const std::string_view> names);

}  // namespace ProcessScanner

namespace recognition {

/// The model that an invocation names, as given: the value of one of `options` (words with blanks
/// between them), else of the options by which most programs take one, else what follows `verb`,
/// else a key of overrides (model.path=…). None where nothing does.
std::optional<std::string_view> modelOf(const Invocation& invocation, std::string_view options,
                                        std::string_view verb);

/// The recipe of a training: the name of a file of settings, where it says more than "config".
std::optional<std::string_view> recipeOf(const Invocation& invocation);

/// Whether an option gives it a model.
bool namesModel(const Invocation& invocation);

/// Whether an option gives it a model that is a file of weights.
bool givesWeights(const Invocation& invocation);

/// Whether an option gives it a model of the hub's or a path, not just a name.
bool holdsModel(const Invocation& invocation);

/// Whether a word that belongs to no option is a model's name: "organization/name", "name3.1:8b",
/// a file of weights.
bool looksLikeModel(std::string_view word);

}  // namespace recognition
