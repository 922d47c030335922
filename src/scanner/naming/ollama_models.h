#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace recognition {

/// What Ollama's blobs are called: "llama3.1 8b". Its runners are given a blob, and only the
/// manifests beside it say of which model that is.
class OllamaModels {
 public:
  /// The model of the blob at this path, FOLDER/blobs/sha256-DIGEST, as a process of `owner` was
  /// given it; none where no manifest tells, or none yet. A folder is read at most once a minute,
  /// and of no more than kMostFolders something is kept.
  std::optional<std::string> nameOf(std::string_view blob, std::uint32_t owner);

  static constexpr std::size_t kMostFolders = 8;

 private:
  struct Folder {
    std::string path;
    std::uint32_t owner = 0;
    std::uint64_t askedAt = 0;                           ///< on platform::processClock()
    bool isAwaited = false;                              ///< it has not answered yet
    std::unordered_map<std::string, std::string> names;  ///< by digest

    void ask(std::uint64_t now);
  };

  std::vector<Folder> folders_;
};

}  // namespace recognition
