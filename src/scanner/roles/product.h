#pragma once

#include <array>
#include <string_view>

#include "scanner/lab_role.h"

namespace recognition {

/// How a product's processes are called.
enum class Naming {
  server,    ///< "vLLM: Qwen2.5 7B Instruct  (:8000)"
  tool,      ///< "ComfyUI  (:8188)": it has no one model
  training,  ///< "TRL SFT: Qwen2.5 0.5B": with the method
  byRules,   ///< as the word rules say (naming/tool_names.cpp): "Ollama Server"
};

/// A word that says what a product's process does, where the words that say so for all products
/// (role_by_activity.cpp) do not know it or say something else.
struct Verb {
  std::string_view word;  ///< a subcommand, or the last words of a module; normalized
  LabRole role = LabRole::none;
  std::string_view name;  ///< what is then shown ("" : the product's own name)
};

/// One product. Its members stand in the order in which a row of the table is read.
// NOLINTNEXTLINE(clang-analyzer-optin.performance.Padding)
struct Product {
  /// What it is known as, with blanks between: names of programs, packages ("@openai/codex"),
  /// modules (and all below them), scripts ("train_network.py", "comfyui/main.py") and the endings
  /// of programs ("*.llamafile"). Lower case, "-" for "_".
  std::string_view names;
  std::string_view name;         ///< what is shown, and groups colours
  LabRole role = LabRole::none;  ///< of a process whose words say nothing else
  Naming naming = Naming::server;
  std::string_view modelOptions;  ///< where its model stands, where the usual options do not say
  std::string_view portOptions;   ///< the same for its port
  std::array<Verb, 6> verbs{};
  /// It shares its name with another program: only `verbs` tell that it is this one.
  bool isOnlyByVerbs = false;
};

}  // namespace recognition
