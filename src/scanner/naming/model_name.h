#pragma once

#include <string>
#include <string_view>

// How a model is called: also ProcessScanner::basenameModel (process_scanner.h), which all other
// spellings begin with. Which option gives the model is another question:
// command_line/model_options.h.

namespace recognition {

/// A model as people say it: ProcessScanner::basenameModel of the part of a path or address that
/// names it, without ":latest", "-GGUF" and the like.
std::string modelName(std::string_view model);

/// The same of a training's recipe, a file of settings: "llama3 1 8B lora" of
/// "llama3_1/8B_lora.yaml".
std::string recipeName(std::string_view path);

}  // namespace recognition
