#pragma once

#include <vector>

namespace bench {

/// What the kernel takes to hand over the facts that a scan needs, and nothing else: one
/// getdents over /proc and, per process, fstatat of its folder and open, read and close of
/// its statm and cmdline. The buffers are reused and nothing is parsed.
class Floor {
 public:
  Floor();
  ~Floor();
  Floor(const Floor&) = delete;
  Floor& operator=(const Floor&) = delete;

  /// Reads every process once. Returns how many there were.
  std::size_t read();

 private:
  void readProcess(const char* pid);
  void readFile(const char* path);

  int proc_;
  std::vector<char> entries_;
  std::vector<char> content_;
};

}  // namespace bench
