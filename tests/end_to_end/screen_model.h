#pragma once

#include <string>
#include <string_view>
#include <vector>

/// What somebody in front of a terminal of the kind xterm sees of the bytes that are sent to
/// it. It knows what curses sends to such a terminal.
class ScreenModel {
 public:
  ScreenModel(int width, int height) { resize(width, height); }

  void feed(std::string_view bytes);
  void resize(int width, int height);

  int height() const { return static_cast<int>(cells_.size()); }
  std::string row(int y) const;
  /// All rows, a line each.
  std::string picture() const;
  /// What is painted in reverse, row by row; rows without any left out.
  std::string reversed() const;
  /// In which rows that is, from 0.
  std::vector<int> reversedRows() const;
  /// Where `text` stands for the first time; x is -1 when it is not there.
  struct Place {
    int x = -1;
    int y = -1;
  };
  Place find(const std::string& text) const;
  /// The bytes between "\033[" and "m" that set the colour of the ground there; "" for none.
  std::string groundAt(int x, int y) const;

  bool onAlternateScreen() const { return alternate_; }
  bool cursorIsVisible() const { return cursorVisible_; }
  bool mouseIsReported() const { return mouse_; }
  bool bracketsPastes() const { return bracketsPastes_; }
  /// How often a picture was announced that is to be shown as a whole; whether one is still drawn.
  int wholePictures() const { return wholePictures_; }
  bool isHeldBack() const { return isHeldBack_; }
  /// What was last put into the clipboard, in base64.
  const std::string& clipboard() const { return clipboard_; }
  bool hasApplicationKeys() const { return applicationKeys_; }
  /// No colour or attribute is left switched on.
  bool writesPlainly() const { return pen_.ground.empty() && pen_.color.empty() && !pen_.reverse; }

 private:
  struct Pen {
    bool reverse = false;
    std::string ground;
    std::string color;
  };
  struct Cell {
    std::string text = " ";  ///< "" for the right half of a wide character
    Pen pen;
  };
  using Row = std::vector<Cell>;

  void put(const std::string& character, int columns);
  void control(char byte);
  bool escape();
  void sequence(const std::string& parameters, char final);
  void setModes(const std::string& parameters, bool on);
  void paint(const std::string& parameters);
  void scroll(int top, int bottom, int rows);
  void lineFeed();
  void erase(int y, int from, int to);

  int width_ = 0;
  std::vector<Row> cells_;
  std::string pending_;  ///< the beginning of a sequence whose end has not come yet
  std::string last_;     ///< the character that "repeat" repeats
  int lastColumns_ = 1;
  Pen pen_;
  int x_ = 0;
  int y_ = 0;
  Place kept_ = {0, 0};  ///< where the cursor was when it was last to be remembered
  int top_ = 0;
  int bottom_ = 0;
  bool alternate_ = false;
  bool cursorVisible_ = true;
  bool mouse_ = false;
  bool bracketsPastes_ = false;
  int wholePictures_ = 0;
  bool isHeldBack_ = false;
  std::string clipboard_;
  bool applicationKeys_ = false;
};
