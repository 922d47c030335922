#include "scanner/mapped_sampling.h"

#include <algorithm>
#include <string>

#include "platform/processes.h"
#include "scanner/credentials/credential_mask.h"
#include "text/path.h"
#include "text/unicode.h"

namespace ProcessScanner {
namespace {

constexpr double kBytesInMB = 1048576;
constexpr std::size_t kMostFiles = 3;
constexpr std::size_t kMostFilesRead = 16;

/// 0 where it is not worth a word.
double worthAWord(std::uint64_t bytes, double footprintMB) {
  const double memMB = static_cast<double>(bytes) / kBytesInMB;
  return memMB >= kLeastMappedMB && memMB >= kLeastPartOfFootprint * footprintMB ? memMB : 0;
}

MappedFilesRead readFiles(std::int32_t pid, std::uint64_t now) {
  MappedFilesRead read{.at = now};
  for (const platform::MappedFile& file : platform::mappedFiles(pid, kMostFilesRead)) {
    const double memMB = static_cast<double>(file.bytes) / kBytesInMB;
    const bool isModel = isModelFile(file.path);
    if (isModel) read.modelMB += memMB;
    if (read.largest.size() == kMostFiles) continue;
    read.largest.push_back(
        {CredentialMask::maskedLine(text::lastPathComponent(file.path)), memMB, isModel});
  }
  return read;
}

}  // namespace

std::optional<MappedMemory> mappedMemory(std::int32_t pid, double footprintMB, bool isOwn,
                                         std::optional<MappedFilesRead>& known) {
  const auto shared = platform::sharedMemory(pid);
  if (!shared) return std::nullopt;
  MappedMemory memory{.mappedMB = worthAWord(shared->fileBytes, footprintMB),
                      .sharedMB = worthAWord(shared->sharedBytes, footprintMB)};
  if (memory.mappedMB == 0 && memory.sharedMB == 0) return std::nullopt;
  if (memory.mappedMB == 0 || !isOwn) return memory;
  const std::uint64_t now = platform::processClock();
  if (!known || now < known->at || now - known->at >= kMappedFilesStand) {
    known = readFiles(pid, now);
  }
  memory.files = known->largest;
  if (!memory.files.empty() && memory.files.front().isModel) {
    memory.modelMB = std::min(known->modelMB, memory.mappedMB);
  }
  return memory;
}

bool isModelFile(std::string_view path) {
  constexpr std::string_view kDeletedFile = " (deleted)";
  if (path.ends_with(kDeletedFile)) path.remove_suffix(kDeletedFile.size());
  const std::string lower = text::lowered(path);
  constexpr std::string_view kEndings[] = {".gguf", ".ggml", ".safetensors", ".onnx",   ".ckpt",
                                           ".pth",  ".pt",   ".llamafile",   ".tflite", ".npz"};
  if (std::ranges::any_of(kEndings, [&](auto ending) { return lower.ends_with(ending); })) {
    return true;
  }
  const std::string_view name = text::lastPathComponent(lower);
  if (name.ends_with(".bin")) return name.find("model") != std::string_view::npos;
  return lower.find("/blobs/sha256-") != std::string::npos;
}

}  // namespace ProcessScanner
