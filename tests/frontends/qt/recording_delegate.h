#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "ui/front_end.h"

/// Remembers what it was told, in order.
class RecordingDelegate : public MenuDelegate {
 public:
  std::vector<std::string> calls;
  std::function<void()> onNeedsUpdate;
  std::function<void(const MenuItem&)> onPerform;

  void menuNeedsUpdate() override {
    calls.emplace_back("needsUpdate");
    if (onNeedsUpdate) onNeedsUpdate();
  }
  void menuWillOpen() override { calls.emplace_back("willOpen"); }
  void menuDidClose() override { calls.emplace_back("didClose"); }
  void perform(std::shared_ptr<const MenuItem> item) override {
    calls.emplace_back("perform " + item->title);
    if (onPerform) onPerform(*item);
  }
};
