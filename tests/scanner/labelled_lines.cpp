#include "scanner/labelled_lines.h"

#include <algorithm>
#include <fstream>
#include <stdexcept>

#include "scanner/credentials/credential_mask.h"
#include "scanner/process_scanner.h"
#include "scanner/table_file.h"
#include "tools/joined.h"

namespace {

/// A key is shown in lines, and told in one.
std::string withoutLineFeeds(std::string text) {
  text.erase(std::remove(text.begin(), text.end(), '\n'), text.end());
  return text;
}

}  // namespace

std::vector<LabelledLine> readLabelledLines(const std::string& path) {
  std::ifstream file(path);
  if (!file) throw std::runtime_error(path + ": cannot be read");
  std::vector<LabelledLine> lines;
  std::string text;
  while (std::getline(file, text)) {
    if (text.empty()) continue;
    const auto fields = splitAt(text, '\t');
    try {
      if (fields.size() != 3) throw std::runtime_error("not three fields");
      LabelledLine line{fields[0], {}, readStringArray(fields[2]), text};
      if (!fields[1].empty()) line.secrets = splitAt(fields[1], '\x1F');
      lines.push_back(std::move(line));
    } catch (const std::exception& error) {
      throw std::runtime_error(path + ":" + std::to_string(lines.size() + 1) + ": " + error.what());
    }
  }
  return lines;
}

std::map<std::string, MaskFigures> maskFigures(const std::vector<LabelledLine>& lines) {
  std::map<std::string, MaskFigures> figures;
  for (const LabelledLine& line : lines) {
    const std::vector<std::string_view> views(line.arguments.begin(), line.arguments.end());
    const std::string whole = joined(line.arguments);
    const auto shown = CredentialMask::shown(views, whole);
    const std::string arguments = joined(shown.arguments.value_or(line.arguments));
    const auto isShown = [&](const std::string& secret) {
      return withoutLineFeeds(shown.commandLine + arguments).find(secret) != std::string::npos;
    };
    const bool isWrong = line.secrets.empty()
                             ? shown.commandLine != ProcessScanner::redactSecrets(whole)
                             : std::any_of(line.secrets.begin(), line.secrets.end(), isShown);
    MaskFigures& of = figures[line.kind];
    ++of.lines;
    if (!isWrong) continue;
    ++of.wrong;
    of.wrongLines.push_back(line.written + "\n    shown: " + shown.commandLine);
  }
  return figures;
}
