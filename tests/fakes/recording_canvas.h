#pragma once

#include <string>
#include <vector>

#include "text/format.h"
#include "ui/canvas.h"

/// Records what is drawn, one line for each command: "fillRect (x y width height) rgba(r g b a)".
/// Figures have six significant digits.
class RecordingCanvas : public Canvas {
 public:
  std::vector<std::string> commands;

  void fillRect(const Rectangle& rect, const Color& color) override {
    commands.push_back("fillRect " + words(rect) + " " + words(color));
  }
  void fillOval(const Rectangle& rect, const Color& color) override {
    commands.push_back("fillOval " + words(rect) + " " + words(color));
  }
  void fillRoundedRect(const Rectangle& rect, double radius, const Color& color) override {
    commands.push_back("fillRoundedRect " + words(rect) + text::format(" r%g ", radius) +
                       words(color));
  }
  void strokeRoundedRect(const Rectangle& rect, double radius, const Color& color,
                         double lineWidth) override {
    commands.push_back("strokeRoundedRect " + words(rect) + text::format(" r%g ", radius) +
                       words(color) + text::format(" w%g", lineWidth));
  }
  void saveState() override { commands.emplace_back("saveState"); }
  void clipToRoundedRect(const Rectangle& rect, double radius) override {
    commands.push_back("clipToRoundedRect " + words(rect) + text::format(" r%g", radius));
  }
  void restoreState() override { commands.emplace_back("restoreState"); }

 private:
  static std::string words(const Rectangle& rect) {
    return text::format("(%g %g %g %g)", rect.x, rect.y, rect.width, rect.height);
  }
  static std::string words(const Color& color) {
    return text::format("rgba(%g %g %g %g)", color.red, color.green, color.blue, color.alpha);
  }
};
