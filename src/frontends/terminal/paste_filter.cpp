#include "frontends/terminal/paste_filter.h"

#include <algorithm>
#include <string_view>

namespace terminal {
namespace {

using Kind = Input::Kind;

constexpr std::u32string_view kBegin = U"\033[200~";
constexpr std::u32string_view kEnd = U"\033[201~";

}  // namespace

/// Kind::pasteBegin or Kind::pasteEnd if this input completes such a mark, else Kind::nothing.
Kind PasteFilter::bracketEndingWith(const Input& input) {
  if (input.kind == Kind::pasteBegin || input.kind == Kind::pasteEnd) return input.kind;
  if (input.kind == Kind::escape) {
    begun_ = kBegin.front();
  } else if (input.kind == Kind::character && !begun_.empty()) {
    begun_ += input.character;
  } else {
    begun_.clear();
  }
  const bool complete = begun_.size() == kBegin.size();
  if (complete && begun_ == kBegin) return Kind::pasteBegin;
  if (complete && begun_ == kEnd) return Kind::pasteEnd;
  if (!kBegin.starts_with(begun_) && !kEnd.starts_with(begun_)) begun_.clear();
  return Kind::nothing;
}

bool PasteFilter::takes(const Input& input) {
  const bool lost = input.came - last_ > kPatience;
  const bool wasPasting = pasting_ && !lost;
  last_ = std::max(last_, input.came);
  const Kind bracket = bracketEndingWith(input);
  pasting_ = bracket == Kind::pasteBegin || (wasPasting && bracket != Kind::pasteEnd);
  return wasPasting || bracket != Kind::nothing;
}

}  // namespace terminal
