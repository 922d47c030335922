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

  /// Lets it refresh once: the CPU seconds that took. 0 when no refresh can be made out.
  virtual double refresh() = 0;
};

struct PeerProgram {
  std::string name;
  bool installed;
  std::function<std::unique_ptr<Peer>()> start;
};

/// Every peer that the figures speak of, installed or not.
std::vector<PeerProgram> peerPrograms();

}  // namespace bench
