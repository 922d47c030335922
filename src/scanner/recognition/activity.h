#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "scanner/lab_role.h"
#include "scanner/recognition/invocation.h"
#include "scanner/recognition/products.h"

namespace recognition {

/// What a process does, and the word that says so.
struct Activity {
  std::optional<LabRole> role;  ///< none: nothing says so
  std::string verb;             ///< the word, normalized; "" : the product alone
  std::string_view name;        ///< what the table calls that ("" : nothing)
};

/// The subcommands of an invocation, normalized: the first bare words, options and their values
/// passed over. At most four.
std::vector<std::string> subcommandsOf(const Invocation& invocation);

/// Of a product that is known: by its row's words, else by those that say so for all products.
Activity activityOf(const KnownProduct& known, const Invocation& invocation);

/// Of what nobody knows, by its structure alone: the words of its own name, its subcommands, and
/// whether an option gives it a model.
Activity activityOf(const Invocation& invocation);

/// What the subcommand makes of a role that a program's words have ("axolotl preprocess" does not
/// train, "litgpt serve" serves); none where it says nothing.
std::optional<LabRole> roleOfSubcommand(const Invocation& invocation, LabRole byWords);

/// Whether the words of this name say that it trains ("run_sft", "train.py").
bool namesTraining(std::string_view name);

}  // namespace recognition
