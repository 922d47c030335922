#pragma once

#include <memory>
#include <string>

#include "child.h"

namespace bench {

/// An X server without a screen, for programs that want one.
class VirtualDisplay {
 public:
  /// Starts it and waits until it takes clients.
  VirtualDisplay();

  /// What DISPLAY is to be set to; "" when the server did not start.
  const std::string& name() const { return name_; }

 private:
  std::unique_ptr<Child> server_;
  std::string name_;
};

}  // namespace bench
