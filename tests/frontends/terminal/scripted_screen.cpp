#include "frontends/terminal/scripted_screen.h"

#include "frontends/terminal/grid_picture.h"

using terminal::Input;

void ScriptedScreen::walkTo(const std::string& text) {
  steps_.push_back({.walkTo = text});
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

Input ScriptedScreen::nextInput(std::optional<double> seconds) {
  while (!steps_.empty()) {
    Step& step = steps_.front();
    if (!step.walkTo.empty()) {
      const bool there = reversed().find(step.walkTo) != std::string::npos;
      if (!there && step.stepsLeft-- > 0) return {.kind = Input::Kind::down};
      if (!there) ++walksGivenUp;
      steps_.pop_front();
    } else if (step.look) {
      const auto look = std::move(step.look);
      steps_.pop_front();
      look();
    } else if (step.input) {
      const Input input = *step.input;
      now_ += step.afterPause;
      steps_.pop_front();
      return input;
    } else {
      const double slept = seconds && *seconds < step.seconds ? *seconds : step.seconds;
      if (seconds) waits.push_back(*seconds);
      now_ += slept;
      step.seconds -= slept;
      if (step.seconds <= 0) steps_.pop_front();
      return {};
    }
  }
  return {.kind = Input::Kind::ended};
}
