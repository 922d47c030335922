#include "frontends/terminal/input_guard.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <string_view>
#include <utility>

#include "frontends/terminal/alert_view.h"
#include "frontends/terminal/menu_geometry.h"
#include "frontends/terminal/menu_view.h"

namespace terminal {
namespace {

using Kind = Input::Kind;

// The marks of a paste, as they come byte by byte.
constexpr std::u32string_view kPasteBegins = U"\033[200~";
constexpr std::u32string_view kPasteEnds = U"\033[201~";

bool isKey(Kind kind) {
  switch (kind) {
    case Kind::nothing:
    case Kind::click:
    case Kind::wheelUp:
    case Kind::wheelDown:
    case Kind::redraw:
    case Kind::ended:
      return false;
    default:
      return true;
  }
}

Targets targetsOf(Size size, const AlertView& alert) {
  const Target any{.alert = &alert};
  Target focused = any;
  focused.item = alert.buttons()[alert.focused()];
  return {.size = size,
          .selection = focused,
          .asks = alert.buttons().size() > 1,
          .lines = std::vector(static_cast<std::size_t>(size.height), any)};
}

/// What a click on this line means: an item of the submenu where the submenu covers the line, else
/// what the line itself shows. `rows` are the keys of the view's rows.
Target targetAt(int y, const MenuView& view, std::span<const ItemKey> rows,
                const MenuGeometry& geometry) {
  if (geometry.submenu && geometry.submenu->contains(geometry.submenu->x, y)) {
    const auto item = geometry.submenuItemAt(geometry.submenu->x + 1, y, view);
    return {.row = view.selectedKey(), .item = item ? view.submenuItems()[*item].title : "frame"};
  }
  if (y == geometry.keys.y) {  // a click there presses a key, which chooses the selection
    return {.row = view.selectedKey(),
            .item = view.submenuIsOpen() ? "keys of the submenu" : "keys"};
  }
  const auto row = geometry.rowAt(geometry.list.x, y, view);
  return row ? Target{.row = rows[*row]} : Target{};
}

}  // namespace

Targets targetsOf(Size size, const MenuView& view, const MenuGeometry& geometry,
                  const AlertView* alert) {
  if (alert != nullptr) return targetsOf(size, *alert);
  Targets targets{.size = size};
  const std::vector<ItemKey> rows = itemKeys(view.rows());
  for (int y = 0; y < size.height; ++y) targets.lines.push_back(targetAt(y, view, rows, geometry));
  if (view.selectedRow() == nullptr) return targets;

  targets.selection = Target{.row = view.selectedKey()};
  targets.selectionY =
      static_cast<int>(*view.cursor().selected()) - static_cast<int>(view.cursor().top());
  const auto item = view.submenuIsOpen() ? view.submenuCursor().selected() : std::nullopt;
  if (item) targets.selection->item = view.submenuItems()[*item].title;
  return targets;
}

void InputGuard::shown(Targets targets, double now) {
  const bool resized = targets.size != targets_.size;
  if (resized || targets.selection != targets_.selection ||
      targets.selectionY != targets_.selectionY) {
    selectionSince_ = now;
  }
  linesSince_.resize(targets.lines.size(), now);
  for (std::size_t y = 0; y < targets.lines.size(); ++y) {
    const bool stands =
        !resized && y < targets_.lines.size() && targets.lines[y] == targets_.lines[y];
    if (!stands) linesSince_[y] = now;
  }
  targets_ = std::move(targets);
}

InputGuard::Verdict InputGuard::judge(const Input& input, double now) {
  const Verdict verdict = isPasted(input) ? Verdict::pasted : verdictOf(input);
  if (isKey(input.kind)) {
    // The key may have come long before it was read. Taking the later time is the strict choice:
    // the next key then has to come later to count.
    lastKey_ = now;
    lastKind_ = input.kind;
    if (input.kind == Kind::character) lastLetter_ = now;
  }
  return verdict;
}

bool InputGuard::isPasted(const Input& input) {
  const bool lost = input.came - lastInput_ > limits_.pastePatience;
  const bool wasPasting = pasting_ && !lost;
  lastInput_ = std::max(lastInput_, input.came);
  const Kind mark = markEndingWith(input);
  pasting_ = mark == Kind::pasteBegin || (wasPasting && mark != Kind::pasteEnd);
  return wasPasting || mark != Kind::nothing;
}

/// Kind::pasteBegin or Kind::pasteEnd if this input completes such a mark, else Kind::nothing.
Kind InputGuard::markEndingWith(const Input& input) {
  if (input.kind == Kind::pasteBegin || input.kind == Kind::pasteEnd) return input.kind;
  if (input.kind == Kind::escape) {
    begunMark_ = kPasteBegins.front();
  } else if (input.kind == Kind::character && !begunMark_.empty()) {
    begunMark_ += input.character;
  } else {
    begunMark_.clear();
  }
  if (begunMark_ == kPasteBegins) return Kind::pasteBegin;
  if (begunMark_ == kPasteEnds) return Kind::pasteEnd;
  if (!kPasteBegins.starts_with(begunMark_) && !kPasteEnds.starts_with(begunMark_)) {
    begunMark_.clear();
  }
  return Kind::nothing;
}

InputGuard::Effect InputGuard::effectOf(const Input& input) const {
  const bool inAlert = targets_.selection && targets_.selection->alert != nullptr;
  switch (input.kind) {
    case Kind::click:
      return Effect::clicks;
    case Kind::enter:
      return Effect::chooses;
    case Kind::right:
      return inAlert ? Effect::moves : Effect::chooses;
    case Kind::character:
      if (inAlert) return input.character == U' ' ? Effect::chooses : Effect::moves;
      return std::u32string_view(U"rq?").find(input.character) != std::u32string_view::npos
                 ? Effect::commands
                 : Effect::moves;
    default:
      return Effect::moves;
  }
}

InputGuard::Verdict InputGuard::verdictOf(const Input& input) const {
  switch (effectOf(input)) {
    case Effect::moves:
      return Verdict::counts;
    case Effect::commands:
      return verdictOfKey(input);
    case Effect::chooses:
      if (const Verdict verdict = verdictOfKey(input); verdict != Verdict::counts) return verdict;
      return input.came - selectionSince_ < limits_.still ? Verdict::tooSoon : Verdict::counts;
    case Effect::clicks: {
      const auto y = static_cast<std::size_t>(input.y);
      const bool moved = y < linesSince_.size() && input.came - linesSince_[y] < limits_.still;
      return moved ? Verdict::tooSoon : Verdict::counts;
    }
  }
  return Verdict::counts;
}

InputGuard::Verdict InputGuard::verdictOfKey(const Input& input) const {
  const double pause = input.came - lastKey_;
  if (input.followed || pause < limits_.betweenKeys) return Verdict::ignored;
  const bool again = input.kind == lastKind_;
  if (again && pause < limits_.slowestRepeat) return Verdict::ignored;
  const bool asked = targets_.asks && input.came - selectionSince_ < limits_.firstRepeat;
  if (again && asked) return Verdict::tooSoon;
  return input.came - lastLetter_ < limits_.still ? Verdict::tooSoon : Verdict::counts;
}

}  // namespace terminal
