#include "frontends/terminal/alert_view.h"

#include <algorithm>
#include <utility>

#include "frontends/terminal/cell_text.h"
#include "frontends/terminal/frame_painter.h"

namespace terminal {
namespace {

constexpr int kWidest = 76;
constexpr int kNarrowest = 34;
constexpr std::size_t kTitleLines = 2;
constexpr int kRoomyText = 8;  // so many lines of text must fit before room is spent on empty ones
constexpr int kButtonGap = 2;

int widest(const std::vector<std::string>& lines) {
  int columns = 0;
  for (const auto& line : lines) columns = std::max(columns, columnsOf(line, kWidest));
  return columns;
}

std::string labelOf(const std::string& button) {
  return "[ " + button + " ]";
}

int rowsOf(const std::vector<std::string>& lines) {
  return static_cast<int>(lines.size());
}

}  // namespace

AlertView::AlertView(Alert alert, const Look& look)
    : alert_(std::move(alert)), look_(look), buttons_(alert_.shownButtons()) {}

void AlertView::layOut(Size screen) {
  int buttonColumns = -kButtonGap;
  for (const auto& button : buttons_) buttonColumns += columnsOf(labelOf(button)) + kButtonGap;

  const int room = std::min(screen.width, kWidest) - 4;
  const std::string text = look_.glyphs.lines(alert_.informativeText);
  title_ = wrapped(look_.glyphs.line(alert_.messageText), room);
  if (title_.size() > kTitleLines) {
    title_.resize(kTitleLines);
    title_.back() = fitted(title_.back() + look_.glyphs.line("…"), room, look_.glyphs.ellipsis);
  }
  text_ = wrapped(text, room);

  const int inner =
      std::clamp(std::max({widest(title_), widest(text_), buttonColumns}), kNarrowest, room);
  const int fixed = 2 + rowsOf(title_) + 1;  // frame, title, buttons
  const bool airy = screen.height >= fixed + 2 + std::min(rowsOf(text_), kRoomyText);
  const int air = airy ? 1 : 0;
  const int textRows = std::min(rowsOf(text_), screen.height - fixed - 2 * air);

  box_ = {0, 0, inner + 4, fixed + 2 * air + textRows};
  box_.x = (screen.width - box_.width) / 2;
  box_.y = (screen.height - box_.height) / 2;
  titleBox_ = {box_.x + 2, box_.y + 1, inner, rowsOf(title_)};
  textBox_ = {box_.x + 2, titleBox_.bottom() + air, inner, textRows};
  top_ = std::min(top_, text_.size() - static_cast<std::size_t>(textRows));

  buttonBoxes_.clear();
  int x = box_.right() - 2 - buttonColumns;
  for (const auto& button : buttons_) {
    buttonBoxes_.push_back({x, textBox_.bottom() + air, columnsOf(labelOf(button)), 1});
    x = buttonBoxes_.back().right() + kButtonGap;
  }
}

void AlertView::paint(CellGrid& grid) const {
  const bool warns = alert_.style == Alert::Style::warning;
  const Style frame{.foreground = warns ? look_.warning() : std::nullopt};
  const bool hasKeys = note_.empty() && !alert_.command.empty();
  const std::string note = hasKeys ? "c copies the command, C shows it" : note_;
  paintFrame(grid, box_, look_.glyphs.line(note), frame, look_.glyphs);
  for (int i = 0; i < titleBox_.height; ++i) {
    grid.write(titleBox_.x, titleBox_.y + i, title_[static_cast<std::size_t>(i)], {.bold = true},
               titleBox_.width);
  }
  for (int i = 0; i < textBox_.height; ++i) {
    grid.write(textBox_.x, textBox_.y + i, text_[top_ + static_cast<std::size_t>(i)], {},
               textBox_.width);
  }
  paintScrollBar(grid, box_.right() - 1, textBox_.y, textBox_.height, top_, text_.size(),
                 look_.glyphs);
  for (std::size_t i = 0; i < buttonBoxes_.size(); ++i) {
    const Box& place = buttonBoxes_[i];
    const Style style{.bold = i == focused_, .reverse = i == focused_};
    grid.write(place.x, place.y, labelOf(buttons_[i]), style, place.width);
  }
}

std::optional<std::size_t> AlertView::buttonAt(int x, int y) const {
  for (std::size_t i = 0; i < buttonBoxes_.size(); ++i) {
    if (buttonBoxes_[i].contains(x, y)) return i;
  }
  return std::nullopt;
}

void AlertView::moveFocus(int step) {
  const auto count = static_cast<int>(buttons_.size());
  focused_ = static_cast<std::size_t>((static_cast<int>(focused_) + step + count) % count);
}

bool AlertView::scrolls() const {
  return rowsOf(text_) > textBox_.height;
}

/// Scrolls the text if it is longer than the box and the key is one that scrolls; else false.
bool AlertView::scrolled(const Input& input) {
  if (!scrolls()) return false;
  const int last = rowsOf(text_) - textBox_.height;
  const int page = std::max(textBox_.height - 1, 1);
  int top = static_cast<int>(top_);
  switch (input.kind) {
    case Input::Kind::up:
      top -= 1;
      break;
    case Input::Kind::down:
      top += 1;
      break;
    case Input::Kind::wheelUp:
      top -= 3;
      break;
    case Input::Kind::wheelDown:
      top += 3;
      break;
    case Input::Kind::pageUp:
      top -= page;
      break;
    case Input::Kind::pageDown:
      top += page;
      break;
    case Input::Kind::home:
      top = 0;
      break;
    case Input::Kind::end:
      top = last;
      break;
    default:
      return false;
  }
  top_ = static_cast<std::size_t>(std::clamp(top, 0, last));
  return true;
}

std::optional<int> AlertView::handle(const Input& input) {
  if (scrolled(input)) return std::nullopt;
  switch (input.kind) {
    case Input::Kind::escape:
      return alert_.escapeAnswer();
    case Input::Kind::enter:
      return kAlertFirstButtonReturn + static_cast<int>(focused_);
    case Input::Kind::character:
      if (input.character == U' ') return kAlertFirstButtonReturn + static_cast<int>(focused_);
      return std::nullopt;
    case Input::Kind::tab:
    case Input::Kind::right:
    case Input::Kind::down:
      moveFocus(1);
      return std::nullopt;
    case Input::Kind::backTab:
    case Input::Kind::left:
    case Input::Kind::up:
      moveFocus(-1);
      return std::nullopt;
    case Input::Kind::click:
      if (const auto button = buttonAt(input.x, input.y)) {
        return kAlertFirstButtonReturn + static_cast<int>(*button);
      }
      return std::nullopt;
    default:
      return std::nullopt;
  }
}

}  // namespace terminal
