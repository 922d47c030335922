#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace bench {

/// Another program that samples the same processes, running.
class Peer {
 public:
  virtual ~Peer() = default;

  /// Lets it refresh once: the CPU seconds that took. 0 when no refresh can be made out within some
  /// seconds, and ever after.
  virtual double refresh() = 0;
};

struct PeerProgram {
  std::string name;
  bool installed;
  std::function<std::unique_ptr<Peer>()> start;
};

/// The command lines of the monitors that people run in a terminal, by name, refreshing every 5
/// seconds, with the file of settings that this takes ("" for none).
struct PacedMonitor {
  std::string name;
  std::vector<std::string> argv;
  std::string settingsFile;  ///< below $XDG_CONFIG_HOME
  std::string settings;
};
std::vector<PacedMonitor> pacedMonitors();

/// What a monitor of a terminal finds in its environment.
std::vector<std::string> terminalEnvironment();

/// Every peer that the figures speak of, installed or not.
std::vector<PeerProgram> peerPrograms();

}  // namespace bench
