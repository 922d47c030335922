#include "ui/spoken_text.h"

#include <algorithm>
#include <iterator>

namespace {

struct Spoken {
  std::string_view glyph;
  std::string_view words;
};

constexpr Spoken kSpoken[] = {
    {"★ ", "AI workload: "},
    {" 🔒", ", protected"},
    {" ↺", ", kept alive"},
    {"·", ","},
    {"²", ""},
    {"—", ""},
};

}  // namespace

std::string spokenText(std::string_view title) {
  std::string result;
  result.reserve(title.size());
  while (!title.empty()) {
    const auto* found =
        std::find_if(std::begin(kSpoken), std::end(kSpoken),
                     [title](const Spoken& entry) { return title.starts_with(entry.glyph); });
    if (found != std::end(kSpoken)) {
      while (found->words.starts_with(',') && result.ends_with(' ')) result.pop_back();
      result += found->words;
      title.remove_prefix(found->glyph.size());
      continue;
    }
    const bool isSecondBlank = title.front() == ' ' && (result.empty() || result.back() == ' ');
    if (!isSecondBlank) result += title.front();
    title.remove_prefix(1);
  }
  while (result.ends_with(' ')) result.pop_back();
  return result;
}
