#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "frontends/terminal/cell_grid.h"
#include "frontends/terminal/screen.h"
#include "ui/alerts.h"

namespace terminal {

/// An open alert: a box with its text, which scrolls when it is long, and the buttons below.
class AlertView {
 public:
  AlertView(Alert alert, const Look& look);

  /// Another informative text; to be laid out anew.
  void setText(std::string text) { alert_.informativeText = std::move(text); }

  /// Breaks the text into lines for a screen of this size, which must not be too small
  /// (isTooSmall).
  void layOut(Size screen);
  void paint(CellGrid& grid) const;

  /// What stands in the upper edge; "" for what keys there are.
  void setNote(std::string note) { note_ = std::move(note); }

  const std::vector<std::string>& buttons() const { return buttons_; }
  std::size_t focused() const { return focused_; }  ///< the button that Enter chooses

  /// What FrontEnd::runModal answers, once the user has answered.
  std::optional<int> handle(const Input& input);

 private:
  std::optional<std::size_t> buttonAt(int x, int y) const;
  void moveFocus(int step);
  bool scrolls() const;
  bool scrolled(const Input& input);

  Alert alert_;
  Look look_;
  std::vector<std::string> buttons_;
  std::size_t focused_ = 0;
  std::string note_;

  std::vector<std::string> title_;
  std::vector<std::string> text_;
  std::size_t top_ = 0;  ///< the first line of the text in view
  Box box_;
  Box titleBox_;
  Box textBox_;
  std::vector<Box> buttonBoxes_;
};

}  // namespace terminal
