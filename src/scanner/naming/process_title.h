#pragma once

#include <optional>
#include <string>

#include "scanner/command_line/invocation.h"
#include "scanner/lab_role.h"
#include "scanner/roles/product_lookup.h"

namespace recognition {

/// What a process says of itself that has written "VLLM::EngineCore" over its command line.
struct TitledWorker {
  LabRole role = LabRole::none;
  std::string displayName;  ///< "vLLM engine"
  std::string product;      ///< "vLLM"
};

/// The worker that a title of the form NAME::PART speaks of; none for other titles.
std::optional<TitledWorker> workerOf(const Invocation& invocation, const Products& products);

}  // namespace recognition
