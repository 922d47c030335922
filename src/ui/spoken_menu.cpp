#include "ui/spoken_menu.h"

#include <algorithm>
#include <iterator>

#include "scanner/vorda_process.h"
#include "ui/row_glyphs.h"
#include "ui/strip_text.h"

namespace {

struct Spoken {
  std::string_view glyph;
  std::string_view words;
};

constexpr std::string_view kSpokenProtected = ", protected";

constexpr Spoken kSpoken[] = {
    {RowGlyphs::kWorkload, "AI workload: "},
    {RowGlyphs::kProtected, kSpokenProtected},
    {RowGlyphs::kKeptAlive, ", kept alive"},
    {"·", ","},
    {"²", ""},
    {"—", ""},
};

/// Goes on with `spoken` as it would with a title that begins so.
void appendSpoken(std::string& spoken, std::string_view title) {
  while (!title.empty()) {
    const auto* found =
        std::find_if(std::begin(kSpoken), std::end(kSpoken),
                     [title](const Spoken& entry) { return title.starts_with(entry.glyph); });
    if (found != std::end(kSpoken)) {
      while (found->words.starts_with(',') && spoken.ends_with(' ')) spoken.pop_back();
      spoken += found->words;
      title.remove_prefix(found->glyph.size());
      continue;
    }
    const bool isSecondBlank = title.front() == ' ' && (spoken.empty() || spoken.back() == ' ');
    if (!isSecondBlank) spoken += title.front();
    title.remove_prefix(1);
  }
  while (spoken.ends_with(' ')) spoken.pop_back();
}

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

}  // namespace

std::string spokenText(std::string_view title) {
  std::string spoken;
  spoken.reserve(title.size());
  appendSpoken(spoken, title);
  return spoken;
}

std::string spokenTitle(const MenuItem& item) {
  if (item.strip) return stripDescription(*item.strip);
  const VordaProcess* process = processOf(item);
  if (process == nullptr) return spokenText(shownTitle(item));
  // Who owns it is said last. The figures are the row's own: a family's are not those of one
  // process.
  std::string figures = item.title.substr(item.name.end);
  constexpr std::string_view kLock = RowGlyphs::kProtected;
  if (const auto lock = figures.find(kLock); lock != std::string::npos) {
    figures.erase(lock, kLock.size());
  }
  std::string spoken = item.title.substr(item.name.begin, item.name.end - item.name.begin);
  appendSpoken(spoken, figures);
  spoken += spokenRole(process->labRole);
  if (process->isProtected) spoken += kSpokenProtected;
  return spoken;
}
