#include "ui/spoken_title.h"

#include <algorithm>
#include <string_view>

#include "scanner/vorda_process.h"
#include "ui/row_direction.h"
#include "ui/strip_text.h"

namespace {

constexpr std::string_view kStar = "★ ";
constexpr std::string_view kLock = " 🔒";
constexpr std::string_view kPause = ", ";

std::string_view spokenRole(LabRole role) {
  switch (role) {
    case LabRole::inference:
      return ", model server";
    case LabRole::training:
      return ", training";
    case LabRole::agent:
      return ", agent or tool";
    case LabRole::none:
      break;
  }
  return "";
}

/// Any title: without a star, with pauses for separators, with single blanks.
std::string plainTitle(std::string_view title) {
  if (title.starts_with(kStar)) title.remove_prefix(kStar.size());
  std::string spoken;
  while (!title.empty()) {
    const std::string_view separator = RowParts::kSeparator;
    if (title.starts_with(separator)) {
      spoken += kPause;
      title.remove_prefix(separator.size());
      title.remove_prefix(std::min(title.find_first_not_of(' '), title.size()));
    } else if (title.front() == ' ' && (spoken.empty() || spoken.back() == ' ')) {
      title.remove_prefix(1);
    } else {
      spoken += title.front();
      title.remove_prefix(1);
    }
  }
  return spoken;
}

}  // namespace

std::string spokenTitle(const MenuItem& item) {
  if (item.strip) return stripDescription(*item.strip);
  const VordaProcess* process = processOf(item);
  if (process == nullptr) return plainTitle(item.title);
  // The figures are the row's own: a family's are not those of one process.
  std::string figures = item.title.substr(item.name.end);
  if (const auto lock = figures.find(kLock); lock != std::string::npos) {
    figures.erase(lock, kLock.size());
  }
  std::string spoken = item.title.substr(item.name.begin, item.name.end - item.name.begin);
  spoken += plainTitle(figures);
  spoken += spokenRole(process->labRole);
  if (process->isProtected) spoken += ", protected";
  return spoken;
}
