#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace ProcessScanner {

/// The login names of those whom processes belong to. Each is asked for once, and anew after a
/// minute of refreshes: names seldom change hands, and asking may involve a directory service.
class OwnerNames {
 public:
  /// To be told at each scan.
  void beginScan();

  /// The login name, or "uid " and the number. Until the next call.
  const std::string& of(std::uint32_t uid);

 private:
  std::vector<std::pair<std::uint32_t, std::string>> names_;  ///< few
  int scans_ = 0;                                             ///< with these names
};

}  // namespace ProcessScanner
