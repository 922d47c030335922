#pragma once

#include <chrono>
#include <concepts>
#include <thread>

/// Whether it becomes so within a minute. Between two looks `meanwhile` is done, which has to be
/// over in a moment: what the test itself must do for it to become so, or a pause.
template <typename IsSo, std::invocable Meanwhile>
bool eventually(IsSo isSo, Meanwhile meanwhile) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::minutes(1);
  while (!isSo()) {
    if (std::chrono::steady_clock::now() > end) return false;
    meanwhile();
  }
  return true;
}

/// The same with so long a pause between two looks.
template <typename IsSo>
bool eventually(IsSo isSo, std::chrono::milliseconds pause) {
  return eventually(isSo, [pause] { std::this_thread::sleep_for(pause); });
}
