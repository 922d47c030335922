#pragma once

#include <gtest/gtest.h>

#include <ostream>
#include <string>

#include "fakes/row_name.h"
#include "scanner/command_words.h"
#include "scanner/process_scanner.h"

/// One row of a naming table: a command and what it is shown as.
struct NamingRow {
  const char* name;
  const char* command;
  const char* displayName;
  const char* product;
};

inline std::ostream& operator<<(std::ostream& out, const NamingRow& row) {
  return out << row.command;
}

inline void expectName(const std::vector<std::string>& arguments, const std::string& displayName,
                       const std::string& product) {
  const auto shown = ProcessScanner::friendlyName(arguments, "fallback");
  EXPECT_EQ(shown.displayName, displayName);
  EXPECT_EQ(shown.product, product);
}
