#pragma once

#include <map>
#include <string>
#include <vector>

/// Command lines of which somebody has said what is secret in them. A file of them has one a
/// line: its class ("name", "program", "format" or "innocent"), the secrets (with U+001F between
/// them; none in an innocent line) and the arguments as a JSON array of strings, with tabs
/// between the three.
struct LabelledLine {
  std::string kind;
  std::vector<std::string> secrets;
  std::vector<std::string> arguments;
  std::string written;  ///< the line of the file
};

/// Throws std::runtime_error, saying where, when a file cannot be read or a line is no such line.
std::vector<LabelledLine> readLabelledLines(const std::string& path);

/// What the mask made of the lines of one class.
struct MaskFigures {
  int lines = 0;
  int wrong = 0;  ///< a secret is shown, or an innocent line is not what redactSecrets makes of it
  std::vector<std::string> wrongLines;  ///< as written, each with what is shown of it
};

/// By class.
std::map<std::string, MaskFigures> maskFigures(const std::vector<LabelledLine>& lines);
