#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "scanner/command_line/arguments.h"

namespace recognition {

/// What a process runs, once everything that only launches it is taken off: interpreters,
/// package runners, sudo and its like, job launchers. Names are normalized (program_names.h). The
/// arguments it was made from must outlive it.
struct Invocation {
  Invocation() = default;
  Invocation(const Invocation&) = delete;  // `arguments` may point into `titleWords`
  Invocation& operator=(const Invocation&) = delete;
  Invocation(Invocation&&) = default;
  Invocation& operator=(Invocation&&) = default;

  std::string program;            ///< "vllm"; the interpreter where nothing below is known
  std::string package;            ///< "@openai/codex", as Node's and Python's runners install it
  std::string module;             ///< "vllm.entrypoints.openai.api-server", "org.pytorch.serve"
  std::string script;             ///< its file's name: "train.py"
  std::string folder;             ///< what its folder adds to a name such as main.py or index.js
  std::string project;            ///< the project's folder, when Python is the project's own (venv)
  std::string_view path;          ///< the word that named it, as given
  Arguments arguments;            ///< the words behind that
  std::size_t launcherWords = 0;  ///< how many words of the line stand before `path`
  bool isWrapper = false;         ///< one of the ten wrappers, which are never looked into
  bool isTitle = false;           ///< the line is a title that the process wrote itself
  bool isCode = false;            ///< an interpreter was given its program as a text
  bool isPython = false;          ///< Python runs it
  bool isDistributed = false;     ///< torchrun, accelerate, deepspeed start it
  bool isServedByHost = false;  ///< `module` or `script` is run by uvicorn, streamlit and the like
  bool waits = false;           ///< the process only waits for the one that it has started

  std::vector<std::string_view> titleWords;  ///< the words of a title that is a command line

  /// The names by which the product table may know it, the most telling first: module, package,
  /// folder and script, script with an option, script, program ("lm-studio.app" of a bundle's).
  std::vector<std::string> names() const;
};

/// Takes off, from the outside in, what launches the program. Linear in the arguments.
Invocation invocationOf(Arguments arguments);

}  // namespace recognition
