// Runs a fuzz target over every file of the folders given and over the beginnings of each,
// as a text may end anywhere.

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "fuzz/fuzzing.h"

namespace {

std::string contentOf(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

void run(std::string_view bytes) {
  // A copy without a byte to spare: a sanitizer sees the first step beyond the end.
  const std::vector<std::uint8_t> exact(bytes.begin(), bytes.end());
  LLVMFuzzerTestOneInput(exact.data(), exact.size());
}

void runWithBeginnings(std::string_view bytes) {
  constexpr std::size_t kBeginnings = 256;
  const std::size_t step = 1 + bytes.size() / kBeginnings;
  for (std::size_t end = 0; end < bytes.size(); end += step) run(bytes.substr(0, end));
  run(bytes);
}

}  // namespace

int main(int argc, char** argv) {
  int files = 0;
  for (int i = 1; i < argc; ++i) {
    for (const auto& entry : std::filesystem::directory_iterator(argv[i])) {
      std::printf("%s\n", entry.path().c_str());
      std::fflush(stdout);
      runWithBeginnings(contentOf(entry.path()));
      ++files;
    }
  }
  if (files == 0) std::fputs("replay: no files to run\n", stderr);
  return files == 0;
}
