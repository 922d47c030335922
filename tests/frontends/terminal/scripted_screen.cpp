#include "frontends/terminal/scripted_screen.h"

#include <algorithm>
#include <cstddef>

#include "frontends/terminal/grid_picture.h"

using terminal::Input;

void ScriptedScreen::walkTo(const std::string& text, Input::Kind step) {
  steps_.push_back({.walkTo = text, .step = step});
}

std::string ScriptedScreen::picture() const {
  return pictureOf(grid_);
}

std::string ScriptedScreen::reversed() const {
  std::string text;
  for (int y = 0; y < grid_.size().height; ++y) {
    for (int x = 0; x < grid_.size().width; ++x) {
      if (grid_.at(x, y).style.reverse) text += grid_.at(x, y).text();
    }
  }
  return text;
}

int ScriptedScreen::lineOf(const std::string& text) const {
  const std::string all = picture();
  const std::size_t found = all.find(text);
  if (found == std::string::npos) return -1;
  return static_cast<int>(
      std::count(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(found), '\n'));
}

/// Lets so much time pass, or as much as there is until the limit; false when some is left.
bool ScriptedScreen::passes(double& seconds, std::optional<double> limit) {
  const double passed = limit && *limit < seconds ? *limit : seconds;
  now_ += passed;
  if (whenTimePasses) whenTimePasses(passed);
  seconds -= passed;
  return seconds <= 0;
}

Input ScriptedScreen::nextInput(std::optional<double> seconds) {
  while (!steps_.empty()) {
    Step& step = steps_.front();
    if (!step.walkTo.empty()) {
      const bool there = reversed().find(step.walkTo) != std::string::npos;
      if (!there && step.stepsLeft-- > 0) return {.kind = step.step, .came = now_};
      if (!there) ++walksGivenUp;
      steps_.pop_front();
    } else if (step.look) {
      const auto look = std::move(step.look);
      steps_.pop_front();
      look();
    } else if (step.input) {
      if (!passes(step.seconds, seconds)) return {};
      Input input = *step.input;
      input.came = now_ - step.late;
      steps_.pop_front();
      return input;
    } else {
      if (seconds) waits.push_back(*seconds);
      if (passes(step.seconds, seconds)) steps_.pop_front();
      return {};
    }
  }
  return {.kind = Input::Kind::ended};
}
