#include "frontends/terminal/footer.h"

#include "frontends/terminal/cell_text.h"
#include "frontends/terminal/menu_view.h"

namespace terminal {
namespace {

constexpr int kMargin = 1;
constexpr int kFooterGap = 2;

Input letter(char32_t character) {
  return {.kind = Input::Kind::character, .character = character};
}

}  // namespace

std::vector<FooterKey> footerKeys(const MenuView& view, const Box& line, const Glyphs& glyphs) {
  if (!view.hint().empty() || !view.prompt().empty()) return {};
  const Input none{.kind = Input::Kind::other};
  const Input enter{.kind = Input::Kind::enter};
  std::vector<FooterKey> keys{{{}, std::string(glyphs.upDown), "Move", none}};
  if (view.submenuIsOpen()) {
    keys.push_back({{}, "Enter", "Choose", enter});
    keys.push_back({{}, "Esc", "Back", {.kind = Input::Kind::escape}});
  } else {
    keys.push_back({{}, "Enter", "Open", enter});
    keys.push_back({{}, "r", "Refresh", letter(U'r')});
    if (view.canFold()) {
      keys.push_back({{}, "f", view.isFolded() ? "Unfold" : "Fold", letter(U'f')});
    }
  }
  keys.push_back({{}, "?", "Keys", letter(U'?')});
  keys.push_back({{}, "q", "Quit", letter(U'q')});

  int all = -kFooterGap;
  for (FooterKey& key : keys) {
    key.place = {0, line.y, columnsOf(key.name) + 1 + columnsOf(key.meaning), 1};
    all += key.place.width + kFooterGap;
  }
  while (!keys.empty() && all > line.width - 2 * kMargin) {
    all -= keys.front().place.width + kFooterGap;
    keys.erase(keys.begin());
  }
  int x = line.x + kMargin;
  for (FooterKey& key : keys) {
    key.place.x = x;
    x += key.place.width + kFooterGap;
  }
  return keys;
}

}  // namespace terminal
