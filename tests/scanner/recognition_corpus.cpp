#include "scanner/recognition_corpus.h"

#include <algorithm>
#include <cctype>
#include <fstream>
#include <stdexcept>

#include "scanner/process_scanner.h"
#include "scanner/recognizer.h"
#include "scanner/table_file.h"
#include "text/path.h"
#include "text/unicode.h"
#include "tools/joined.h"

namespace {

/// The name without "  (:8080)".
std::string withoutPort(const std::string& name) {
  const auto at = name.rfind("(:");
  if (at == std::string::npos || !name.ends_with(')')) return name;
  return name.substr(0, name.find_last_not_of(' ', at - 1) + 1);
}

std::string withSingleBlanks(const std::string& name) {
  std::string out;
  for (const char c : name) {
    if (c != ' ' || out.empty() || out.back() != ' ') out += c;
  }
  return out;
}

bool isSame(const std::string& name, const std::string& wanted) {
  const auto lowered = [](const std::string& text) { return text::lowered(text); };
  if (lowered(name) == lowered(wanted)) return true;
  if (wanted.find("(:") == std::string::npos && lowered(withoutPort(name)) == lowered(wanted))
    return true;
  for (const auto& [plain, given] :
       {std::pair{"llama.cpp: ", "LM Studio: "}, std::pair{"MLX: ", "MLX Server: "},
        std::pair{"MLX VLM: ", "MLX Server: "}}) {
    if (wanted.starts_with(plain) && name.starts_with(given)) {
      return isSame(name, given + wanted.substr(std::string(plain).size()));
    }
  }
  constexpr std::string_view kBlob = "Ollama: (name of blob)";
  if (wanted == kBlob) {
    return name == "Ollama" || (name.starts_with("Ollama: ") &&
                                std::all_of(name.begin() + 8, name.end(),
                                            [](unsigned char c) { return std::isxdigit(c) != 0; }));
  }
  return false;
}

}  // namespace

std::vector<CorpusLine> readCorpus(const std::string& path) {
  std::ifstream file(path);
  if (!file) throw std::runtime_error(path + ": cannot be read");
  std::vector<CorpusLine> lines;
  std::string text;
  std::getline(file, text);
  while (std::getline(file, text)) {
    if (text.empty()) continue;
    const auto fields = splitAt(text, '\t');
    try {
      if (fields.size() != 6) throw std::runtime_error("not six fields");
      const auto role = labRole(fields[3]);
      if (!role) throw std::runtime_error("no role");
      CorpusLine line{fields[0], {}, *role, fields[4]};
      // The platform leaves empty arguments out.
      for (std::string& argument : readStringArray(fields[2])) {
        if (!argument.empty()) line.arguments.push_back(std::move(argument));
      }
      lines.push_back(std::move(line));
    } catch (const std::exception& error) {
      throw std::runtime_error(path + ": " + text.substr(0, 60) + ": " + error.what());
    }
  }
  return lines;
}

Recognition recognized(const std::vector<std::string>& arguments,
                       const recognition::Products& products) {
  const std::string line = joined(arguments);
  const std::string_view name = text::lastPathComponent(arguments.front());
  const LabRole byRules = ProcessScanner::classifyLabRole(name, arguments, line);
  const std::vector<std::string_view> views(arguments.begin(), arguments.end());
  const auto verdict = recognition::verdictOn(text::lowered(name), views, byRules, products);
  if (verdict.name) return {verdict.role, verdict.name->displayName};
  return {verdict.role, ProcessScanner::friendlyName(arguments, name).displayName};
}

bool saysTheSame(const std::string& name, const std::string& wanted) {
  const auto wishes = splitAt(wanted, '|');
  return std::any_of(wishes.begin(), wishes.end(), [&](const std::string& wish) {
    return isSame(withSingleBlanks(name), withSingleBlanks(wish));
  });
}

CorpusFigures corpusFigures(const std::vector<CorpusLine>& lines,
                            const recognition::Products& products) {
  CorpusFigures figures;
  for (const CorpusLine& line : lines) {
    const Recognition got = recognized(line.arguments, products);
    ++figures.lines;
    if (got.role == line.role) {
      ++figures.rolesRight;
    } else {
      figures.wrong.push_back(line.id + " role " + std::string(rawValue(got.role)) + ", not " +
                              std::string(rawValue(line.role)) + ": " + joined(line.arguments));
    }
    if (line.role == LabRole::none) continue;
    ++figures.named;
    if (saysTheSame(got.name, line.name)) {
      ++figures.namesRight;
    } else {
      figures.wrong.push_back(line.id + " name \"" + got.name + "\", not \"" + line.name +
                              "\": " + joined(line.arguments));
    }
  }
  return figures;
}
