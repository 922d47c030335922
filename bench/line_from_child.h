#pragma once

#include <string>

namespace bench {

/// A pipe through which a program that is started next says one line.
class LineFromChild {
 public:
  LineFromChild();
  ~LineFromChild();
  LineFromChild(const LineFromChild&) = delete;
  LineFromChild& operator=(const LineFromChild&) = delete;

  /// The number of the descriptor that the program shall write to.
  std::string descriptor() const { return std::to_string(ends_[1]); }

  /// Waits for the line; "" when the program ends without one. Once only.
  std::string read();

 private:
  int ends_[2] = {-1, -1};
};

}  // namespace bench
