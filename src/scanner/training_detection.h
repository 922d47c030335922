#pragma once

#include <string_view>

#include "scanner/command_line.h"

namespace ProcessScanner {

/// Whether a process trains or fine-tunes a model.
enum class Training {
  no,
  unlessServing,  ///< there is only evidence of LoRA, which a server with an adapter shows as well
  yes,
};

/// `exe`: the executable's name in lower case.
Training trainingOf(std::string_view exe, const CommandLine& line);

}  // namespace ProcessScanner
