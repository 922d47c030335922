#pragma once

#include <string>
#include <vector>

#include "scanner/lab_role.h"
#include "scanner/roles/product_lookup.h"

/// Command lines of which somebody has said what a person would call them. A file of them begins
/// with a line of headings and has one a line: id, system ("linux" or "macos"), the arguments as a
/// JSON array of strings, the role, the name, and where the line is from, with tabs between them
/// ("A:" where the line is put together from what stands there; "seen in use" where it was met in
/// public texts that are not recorded; "u" for users' names).
/// A "|" in the name stands between names that are as good.
struct CorpusLine {
  std::string id;
  std::vector<std::string> arguments;
  LabRole role = LabRole::none;
  std::string name;
};

/// Throws std::runtime_error, saying where, when a file cannot be read or a line is no such line.
std::vector<CorpusLine> readCorpus(const std::string& path);

/// What both looks make of a command line.
struct Recognition {
  LabRole role = LabRole::none;
  std::string name;
};
Recognition recognized(const std::vector<std::string>& arguments,
                       const recognition::Products& products = recognition::Products::known());

/// Whether a name says what the corpus wants. Beside the name itself, as good are:
/// - the same with a port that the corpus leaves out;
/// - "LM Studio: …" and "MLX Server: …" for "llama.cpp: …" and "MLX: …": those prefixes are given;
/// - the first digits of a blob for "(name of blob)", where no manifest tells it.
bool saysTheSame(const std::string& name, const std::string& wanted);

struct CorpusFigures {
  int lines = 0;
  int rolesRight = 0;
  int named = 0;  ///< lines with a role
  int namesRight = 0;
  std::vector<std::string> wrong;  ///< one line each, for people
};
CorpusFigures corpusFigures(const std::vector<CorpusLine>& lines,
                            const recognition::Products& products = recognition::Products::known());
