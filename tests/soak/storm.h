#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <vector>

#include "end_to_end/terminal_session.h"
#include "soak/led_program.h"

/// A storm: something hard that happens on a machine, while the program runs. Whatever it is,
/// the program is held to the same: it does not end, no refresh and no key takes more than 2
/// seconds, it holds no more memory and files at the end than at the beginning, and none of the
/// processes that have to be in the list is ever missing.
class Storm : public testing::Test {
 public:
  /// How long all storms may take together.
  static void setSeconds(double seconds);

 protected:
  using Pids = std::vector<pid_t>;
  static constexpr double kLongestFreeze = 2;  // seconds
  static constexpr long kMostGrowthKiB = 1000;

  /// This storm's share of the time.
  static double share();

  /// Refreshes for so many seconds; `expected` have to be in the list each time.
  static void ride(LedProgram& program, const Pids& expected, double seconds = share(),
                   long mostGrowthKiB = kMostGrowthKiB);
  /// One refresh; false when it was not as it should be.
  static bool refresh(LedProgram& program, const Pids& expected);
  /// Presses keys for so many seconds; `before` runs ahead of each.
  static void ride(TerminalSession& terminal, double seconds = share(),
                   const std::function<void()>& before = {});
  /// Opens and closes the list of keys; false when either took too long.
  static bool answersKeys(TerminalSession& terminal);
};
