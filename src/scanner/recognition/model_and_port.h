#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "scanner/lab_role.h"
#include "scanner/recognition/invocation.h"

namespace recognition {

/// The model that an invocation names, as given: the value of one of `options` (words with blanks
/// between them), else of the options by which most programs take one, else what follows `verb`,
/// else a key of overrides (model.path=…). None where nothing does.
std::optional<std::string_view> modelOf(const Invocation& invocation, std::string_view options,
                                        std::string_view verb);

/// The recipe of a training: the name of a file of settings, where it says more than "config".
std::optional<std::string_view> recipeOf(const Invocation& invocation);

/// The port that it listens at: the value of one of `options`, else of those by which most servers
/// take one; of an address its port. Digits alone.
std::optional<std::string_view> portOf(const Invocation& invocation, std::string_view options);

/// "  (:8000)", as names show that port; "" where there is none. Of a server of models (`role`)
/// "-p" gives it as well.
std::string portSuffix(const Invocation& invocation, std::string_view options,
                       LabRole role = LabRole::none);

/// Whether an option gives it a model.
bool namesModel(const Invocation& invocation);

/// Whether that is a file of weights.
bool givesWeights(const Invocation& invocation);

/// Whether an option gives it a model of the hub's or a path, not just a name.
bool holdsModel(const Invocation& invocation);

/// Whether a word that belongs to no option is a model's name: "organization/name", "name3.1:8b",
/// a file of weights.
bool looksLikeModel(std::string_view word);

/// A model as people say it: ProcessScanner::basenameModel of the part of a path or address that
/// names it.
std::string modelName(std::string_view model);

}  // namespace recognition
