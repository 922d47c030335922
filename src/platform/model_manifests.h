#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace platform {

inline constexpr std::size_t kLongestModelManifest = 64 << 10;  ///< in bytes
inline constexpr std::size_t kMostModelManifests = 512;         ///< of one folder

/// A file that says of which blobs a model of Ollama's is made.
struct ModelManifest {
  std::string path;  ///< below "manifests": "registry.ollama.ai/library/llama3.1/8b"
  std::string text;
};

/// The manifests below `modelFolder`, the absolute path of a folder that holds "blobs" and
/// "manifests": regular files that can be read, belong to `owner` or to root, and are at most
/// kLongestModelManifest long; of more than kMostModelManifests some. All of it UTF-8. No link is
/// followed below `modelFolder`. Empty where there are none.
///
/// The folder may be on a file system that does not answer, so 50 ms are waited at most, and not at
/// all while this folder or another one has failed to answer in time. None: it has not been read
/// yet. The reading goes on in the background, a few folders at a time, and a later call for the
/// same folder and owner returns what it found.
std::optional<std::vector<ModelManifest>> readModelManifests(const std::string& modelFolder,
                                                             std::uint32_t owner);

}  // namespace platform
