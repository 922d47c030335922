#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "scanner/lab_role.h"

/// What the word rules promise by example of one process, whatever looks at it besides.
struct PromisedExample {
  const char* name;
  std::vector<std::string> arguments;
  LabRole role;
  std::string displayName;
  std::string product;
};

std::ostream& operator<<(std::ostream& out, const PromisedExample& example);

/// All of them. A scripted and the real machine are asked for each.
const std::vector<PromisedExample>& promisedExamples();
