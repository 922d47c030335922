#include "end_to_end/screen_model.h"

#include <algorithm>
#include <cwchar>
#include <stdexcept>

#include "text/scalar.h"

namespace {

std::vector<int> numbersOf(const std::string& parameters) {
  std::vector<int> numbers;
  std::string digits;
  for (const char c : parameters + ";") {
    if (c == ';') {
      numbers.push_back(digits.empty() ? 0 : std::stoi(digits));
      digits.clear();
    } else if (c >= '0' && c <= '9') {
      digits += c;
    }
  }
  return numbers;
}

int columnsOf(int scalar) {
  return std::max(wcwidth(static_cast<wchar_t>(scalar)), 0);
}

}  // namespace

void ScreenModel::resize(int width, int height) {
  width_ = width;
  cells_.resize(static_cast<std::size_t>(height));
  for (Row& row : cells_) row.resize(static_cast<std::size_t>(width));
  top_ = 0;
  bottom_ = height - 1;
  x_ = std::min(x_, width - 1);
  y_ = std::min(y_, height - 1);
}

void ScreenModel::feed(std::string_view bytes) {
  pending_ += bytes;
  while (!pending_.empty()) {
    const auto first = static_cast<unsigned char>(pending_[0]);
    if (first == 0x1B) {
      if (!escape()) return;
    } else if (first < 0x20 || first == 0x7F) {
      control(pending_[0]);
      pending_.erase(0, 1);
    } else {
      const auto scalar = text::firstScalar(pending_);
      if (scalar.value < 0 && pending_.size() < 4) return;  // the rest is still to come
      put(pending_.substr(0, scalar.length), columnsOf(scalar.value));
      pending_.erase(0, scalar.length);
    }
  }
}

void ScreenModel::put(const std::string& character, int columns) {
  if (columns == 0) {  // an accent
    const int before = std::max(x_ - 1, 0);
    Row& row = cells_[static_cast<std::size_t>(y_)];
    const bool rightHalf = row[static_cast<std::size_t>(before)].text.empty();
    row[static_cast<std::size_t>(rightHalf ? before - 1 : before)].text += character;
    return;
  }
  if (x_ + columns > width_) {
    x_ = 0;
    lineFeed();
  }
  Row& row = cells_[static_cast<std::size_t>(y_)];
  row[static_cast<std::size_t>(x_)] = {character, pen_};
  if (columns == 2) row[static_cast<std::size_t>(x_ + 1)] = {"", pen_};
  x_ += columns;
  last_ = character;
  lastColumns_ = columns;
}

void ScreenModel::control(char byte) {
  if (byte == '\r') x_ = 0;
  if (byte == '\n') lineFeed();
  if (byte == '\b') x_ = std::max(x_ - 1, 0);
  if (byte == '\t') x_ = std::min((x_ / 8 + 1) * 8, width_ - 1);
}

void ScreenModel::lineFeed() {
  if (y_ == bottom_) {
    scroll(top_, bottom_, 1);
  } else {
    y_ = std::min(y_ + 1, height() - 1);
  }
}

/// Up by so many rows; a negative number: down.
void ScreenModel::scroll(int top, int bottom, int rows) {
  const Row blank(static_cast<std::size_t>(width_));
  const int span = bottom - top + 1;
  rows = std::clamp(rows, -span, span);
  const auto first = cells_.begin() + top;
  const auto last = cells_.begin() + bottom + 1;
  if (rows >= 0) {
    std::rotate(first, first + rows, last);
    std::fill(last - rows, last, blank);
  } else {
    std::rotate(first, last + rows, last);
    std::fill(first, first - rows, blank);
  }
}

void ScreenModel::erase(int y, int from, int to) {
  Pen ground;
  ground.ground = pen_.ground;
  for (int x = std::max(from, 0); x < std::min(to, width_); ++x) {
    cells_[static_cast<std::size_t>(y)][static_cast<std::size_t>(x)] = {" ", ground};
  }
}

/// Takes the sequence that `pending_` begins with; false when its end is missing.
bool ScreenModel::escape() {
  if (pending_.size() < 2) return false;
  const char kind = pending_[1];
  if (kind == '[') {
    const auto end = std::find_if(pending_.begin() + 2, pending_.end(),
                                  [](char c) { return c >= '@' && c <= '~'; });
    if (end == pending_.end()) return false;
    const std::string parameters(pending_.begin() + 2, end);
    const char final = *end;
    pending_.erase(pending_.begin(), end + 1);
    sequence(parameters, final);
    return true;
  }
  if (kind == ']') {  // a command to the terminal, such as to reset its palette
    const std::size_t end = pending_.find('\a');
    if (end == std::string::npos) return false;
    const std::string command = pending_.substr(2, end - 2);
    if (command.starts_with("52;c;")) clipboard_ = command.substr(5);
    pending_.erase(0, end + 1);
    return true;
  }
  if (kind == '(' || kind == ')') {  // a character set
    if (pending_.size() < 3) return false;
    pending_.erase(0, 3);
    return true;
  }
  if (kind == 'M') {
    if (y_ == top_) {
      scroll(top_, bottom_, -1);
    } else {
      y_ = std::max(y_ - 1, 0);
    }
  } else if (kind == '7') {
    kept_ = {x_, y_};
  } else if (kind == '8') {
    x_ = kept_.x;
    y_ = kept_.y;
  } else if (kind != '=' && kind != '>') {
    throw std::runtime_error(std::string("unknown escape sequence ESC ") + kind);
  }
  pending_.erase(0, 2);
  return true;
}

void ScreenModel::sequence(const std::string& parameters, char final) {
  const std::vector<int> numbers = numbersOf(parameters);
  const int first = numbers[0];
  const int count = std::max(first, 1);
  Row& row = cells_[static_cast<std::size_t>(y_)];
  const auto here = row.begin() + std::min(x_, width_ - 1);
  switch (final) {
    case 'H':
      y_ = std::clamp(count - 1, 0, height() - 1);
      x_ = std::clamp(numbers.size() > 1 ? std::max(numbers[1], 1) - 1 : 0, 0, width_ - 1);
      break;
    case 'A':
      y_ = std::max(y_ - count, 0);
      break;
    case 'B':
      y_ = std::min(y_ + count, height() - 1);
      break;
    case 'C':
      x_ = std::min(x_ + count, width_ - 1);
      break;
    case 'D':
      x_ = std::max(x_ - count, 0);
      break;
    case 'G':
      x_ = std::clamp(count - 1, 0, width_ - 1);
      break;
    case 'd':
      y_ = std::clamp(count - 1, 0, height() - 1);
      break;
    case 'Z':
      x_ = std::max((x_ - 1) / 8 * 8, 0);
      break;
    case 'J':
      if (first == 0) erase(y_, x_, width_);
      for (int y = first == 0 ? y_ + 1 : 0; y < height(); ++y) erase(y, 0, width_);
      break;
    case 'K':
      erase(y_, first == 0 ? x_ : 0, first == 1 ? x_ + 1 : width_);
      break;
    case 'X':
      erase(y_, x_, x_ + count);
      break;
    case '@':
      row.insert(here, static_cast<std::size_t>(count), Cell{});
      row.resize(static_cast<std::size_t>(width_));
      break;
    case 'P':
      row.erase(here, here + std::min(count, width_ - x_));
      row.resize(static_cast<std::size_t>(width_));
      break;
    case 'L':
      scroll(y_, bottom_, -count);
      break;
    case 'M':
      scroll(y_, bottom_, count);
      break;
    case 'S':
      scroll(top_, bottom_, count);
      break;
    case 'T':
      scroll(top_, bottom_, -count);
      break;
    case 'b':
      for (int i = 0; i < count; ++i) put(std::string(last_), lastColumns_);
      break;
    case 'r':
      top_ = count - 1;
      bottom_ = numbers.size() > 1 && numbers[1] > 0 ? numbers[1] - 1 : height() - 1;
      x_ = y_ = 0;
      break;
    case 'm':
      paint(parameters);
      break;
    case 'h':
    case 'l':
      setModes(parameters, final == 'h');
      break;
    case 't':  // the window's title is kept and given back
      break;
    default:
      throw std::runtime_error("unknown sequence ESC [ " + parameters + final);
  }
}

void ScreenModel::setModes(const std::string& parameters, bool on) {
  if (parameters.empty() || parameters[0] != '?') return;
  for (const int mode : numbersOf(parameters)) {
    if (mode == 1) applicationKeys_ = on;
    if (mode == 25) cursorVisible_ = on;
    if (mode == 1000) mouse_ = on;
    if (mode == 2004) bracketsPastes_ = on;
    if (mode == 2026 && on) ++wholePictures_;
    if (mode == 2026) isHeldBack_ = on;
    if (mode == 1049) {
      alternate_ = on;
      for (int y = 0; y < height(); ++y) erase(y, 0, width_);
    }
  }
}

void ScreenModel::paint(const std::string& parameters) {
  const std::vector<int> numbers = numbersOf(parameters);
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    const int number = numbers[i];
    if (number == 0) pen_ = {};
    if (number == 7) pen_.reverse = true;
    if (number == 27) pen_.reverse = false;
    if (number == 39) pen_.color.clear();
    if (number == 49) pen_.ground.clear();
    const bool isGround = (number >= 40 && number <= 48) || (number >= 100 && number <= 107);
    const bool isColor = (number >= 30 && number <= 38) || (number >= 90 && number <= 97);
    if (!isGround && !isColor) continue;
    std::string value = std::to_string(number);
    if (number == 38 || number == 48) {
      const std::size_t more = i + 1 < numbers.size() && numbers[i + 1] == 2 ? 4 : 2;
      for (std::size_t k = 0; k < more && i + 1 < numbers.size(); ++k) {
        value += ";" + std::to_string(numbers[++i]);
      }
    }
    (isGround ? pen_.ground : pen_.color) = value;
  }
}

std::string ScreenModel::row(int y) const {
  std::string text;
  for (const Cell& cell : cells_[static_cast<std::size_t>(y)]) text += cell.text;
  return text.substr(0, text.find_last_not_of(' ') + 1);
}

std::string ScreenModel::picture() const {
  std::string picture;
  for (int y = 0; y < height(); ++y) picture += row(y) + "\n";
  return picture;
}

std::string ScreenModel::reversed() const {
  std::string all;
  for (const Row& row : cells_) {
    std::string text;
    for (const Cell& cell : row) {
      if (cell.pen.reverse) text += cell.text;
    }
    if (!text.empty()) all += text.substr(0, text.find_last_not_of(' ') + 1) + "\n";
  }
  return all;
}

std::vector<int> ScreenModel::reversedRows() const {
  std::vector<int> rows;
  for (int y = 0; y < height(); ++y) {
    const Row& row = cells_[static_cast<std::size_t>(y)];
    if (std::any_of(row.begin(), row.end(), [](const Cell& cell) { return cell.pen.reverse; })) {
      rows.push_back(y);
    }
  }
  return rows;
}

ScreenModel::Place ScreenModel::find(const std::string& text) const {
  for (int y = 0; y < height(); ++y) {
    const Row& row = cells_[static_cast<std::size_t>(y)];
    for (int x = 0; x < width_; ++x) {
      std::string from;
      for (auto cell = row.begin() + x; cell != row.end() && from.size() < text.size(); ++cell) {
        from += cell->text;
      }
      if (from.compare(0, text.size(), text) == 0) return {x, y};
    }
  }
  return {};
}

std::string ScreenModel::groundAt(int x, int y) const {
  return cells_[static_cast<std::size_t>(y)][static_cast<std::size_t>(x)].pen.ground;
}
