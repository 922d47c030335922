#include "scanner/naming/ollama_models.h"

#include <algorithm>

#include "platform/model_manifests.h"
#include "platform/processes.h"
#include "text/ascii.h"
#include "text/path.h"

namespace recognition {
namespace {

constexpr std::uint64_t kMinute = 60'000'000'000;  // in nanoseconds
constexpr std::string_view kBlobs = "/blobs/sha256-";
constexpr std::size_t kDigestLength = 64;

/// "llama3.1 8b" of registry.ollama.ai/library/llama3.1/8b; the tag "latest" says nothing.
std::string modelOfPath(std::string_view path) {
  const std::string_view tag = text::lastPathComponent(path);
  path = path.substr(0, path.size() - tag.size());
  const std::string name(text::lastPathComponent(path));
  return tag == "latest" ? name : name + " " + std::string(tag);
}

bool saysMore(const std::string& name, const std::string& than) {
  const bool hasTag = name.find(' ') != std::string::npos;
  const bool otherHasTag = than.find(' ') != std::string::npos;
  return hasTag != otherHasTag ? hasTag : name < than;
}

/// By digest.
std::unordered_map<std::string, std::string> namesIn(
    const std::vector<platform::ModelManifest>& manifests) {
  constexpr std::string_view kDigest = "sha256:";
  constexpr int kMostLayers = 32;
  std::unordered_map<std::string, std::string> names;
  for (const platform::ModelManifest& manifest : manifests) {
    const std::string name = modelOfPath(manifest.path);
    const std::string_view text = manifest.text;
    int layers = 0;
    for (auto at = text.find(kDigest); at != std::string_view::npos && layers < kMostLayers;
         at = text.find(kDigest, at + 1), ++layers) {
      const std::string_view digest = text.substr(at + kDigest.size(), kDigestLength);
      if (!std::ranges::all_of(digest, text::isHexDigit)) continue;
      const auto [place, isNew] = names.try_emplace(std::string(digest), name);
      if (!isNew && saysMore(name, place->second)) place->second = name;
    }
  }
  return names;
}

}  // namespace

void OllamaModels::Folder::ask(std::uint64_t now) {
  if (!isAwaited) askedAt = now;
  const auto manifests = platform::readModelManifests(path, owner);
  isAwaited = !manifests;
  if (manifests) names = namesIn(*manifests);
}

std::optional<std::string> OllamaModels::nameOf(std::string_view blob, std::uint32_t owner) {
  const auto at = blob.rfind(kBlobs);
  if (at == std::string_view::npos || at == 0 || blob.front() != '/') return std::nullopt;
  const std::string digest(blob.substr(at + kBlobs.size()));
  if (digest.size() != kDigestLength) return std::nullopt;
  const std::uint64_t now = platform::processClock();
  const auto isFresh = [now](std::uint64_t askedAt) {
    return askedAt <= now && now - askedAt < kMinute;
  };

  const std::string_view path = blob.substr(0, at);
  auto folder = std::ranges::find_if(
      folders_, [&](const Folder& known) { return known.path == path && known.owner == owner; });
  if (folder == folders_.end()) {
    if (folders_.size() >= kMostFolders) {
      // All places are taken: the oldest gives way, but not before it may be read again, so that a
      // process that names ever new folders does not have them all read.
      folder = std::ranges::min_element(folders_, {}, &Folder::askedAt);
      if (isFresh(folder->askedAt)) return std::nullopt;
      *folder = {.path = std::string(path), .owner = owner};
    } else {
      folders_.push_back({.path = std::string(path), .owner = owner});
      folder = folders_.end() - 1;
    }
    folder->ask(now);
  } else if (folder->isAwaited) {
    folder->ask(now);
  }
  auto name = folder->names.find(digest);
  if (name == folder->names.end() && !isFresh(folder->askedAt)) {
    folder->ask(now);
    name = folder->names.find(digest);
  }
  if (name == folder->names.end()) return std::nullopt;
  return name->second;
}

}  // namespace recognition
