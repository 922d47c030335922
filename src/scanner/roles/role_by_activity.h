#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "scanner/command_line/invocation.h"
#include "scanner/lab_role.h"
#include "scanner/roles/product_lookup.h"

namespace recognition {

/// What a process does, and the word that says so.
struct Activity {
  std::optional<LabRole> role;  ///< none: nothing says so
  std::string verb;             ///< the word, normalized; "" where no word was needed
  std::string_view name;        ///< what the product table calls it; "" where it does not
};

/// The subcommands of an invocation, normalized: its first words that are neither options nor
/// their values, paths or settings. At most four.
std::vector<std::string> subcommandsOf(const Invocation& invocation);

/// What a known product does: by the words that its row of the table lists, else by words that mean
/// the same for all products ("serve", "train").
Activity activityOf(const KnownProduct& known, const Invocation& invocation);

/// What a program does that is in no table: by the words of its own name, its subcommands, and
/// whether an option gives it a model. Most options by which trainings are known are words of
/// role_word_table.h.
Activity activityOf(const Invocation& invocation);

/// The role that the subcommand gives a program whose words say `byWords`: "axolotl preprocess"
/// does not train, "litgpt serve" serves. None where it says nothing.
std::optional<LabRole> roleOfSubcommand(const Invocation& invocation, LabRole byWords);

/// Whether the words of this name say that it trains ("run_sft", "train.py").
bool namesTraining(std::string_view name);

}  // namespace recognition
