#pragma once

#include <systemd/sd-bus.h>

#include <memory>
#include <string>
#include <vector>

#include "child.h"
#include "virtual_display.h"

namespace bench {

/// A desktop for the tray's program: a display, a message bus, and somebody on it who shows
/// icons, as far as a program can tell.
class TrayDesktop {
 public:
  TrayDesktop();

  /// Why there is none; "" when there is one.
  const std::string& problem() const { return problem_; }

  /// What a program on this desktop finds in its environment.
  std::vector<std::string> environment() const;

  /// Answers what has come in. To be called again and again.
  void answer();

  /// Whether a program has brought an icon.
  bool hasIcon() const { return !icon_.empty(); }

  /// Clicks on the icon.
  void click();

  /// Asks for the exported menu; once it has come, chooses the first item of it with this label.
  void choose(std::string label);

  /// How many bytes the longest label of the exported menu had when it last came; 0: not yet.
  std::size_t longestLabel() const { return longestLabel_; }

 private:
  struct Close {
    void operator()(sd_bus* bus) const { sd_bus_close_unref(bus); }
  };

  void startBus();
  void showIcons();
  static int registerItem(sd_bus_message* call, void* self, sd_bus_error*);
  static int layoutCame(sd_bus_message* reply, void* self, sd_bus_error*);
  static int hostIsRegistered(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply,
                              void*, sd_bus_error*);

  VirtualDisplay display_;
  std::unique_ptr<Child> daemon_;
  std::string address_;
  std::unique_ptr<sd_bus, Close> bus_;
  std::string icon_;
  std::string wanted_;
  std::size_t longestLabel_ = 0;
  std::string problem_;
};

}  // namespace bench
