#include "scanner/mapped_models.h"

#include <algorithm>
#include <string>

#include "platform/processes.h"
#include "scanner/credentials/credential_mask.h"
#include "scanner/memory_units.h"
#include "text/path.h"
#include "text/unicode.h"

namespace ProcessScanner {
namespace {

constexpr std::size_t kMostFiles = 3;
constexpr std::size_t kMostFilesRead = 16;

/// 0 where it is not worth a word.
double worthAWord(std::uint64_t bytes, double footprintMB) {
  const double memMB = static_cast<double>(bytes) / kBytesPerMB;
  return memMB >= kLeastMappedMB && memMB >= kLeastPartOfFootprint * footprintMB ? memMB : 0;
}

MappedFilesRead readFiles(std::int32_t pid, std::uint64_t now) {
  MappedFilesRead read{.at = now};
  for (const platform::MappedFile& file : platform::mappedFiles(pid, kMostFilesRead)) {
    const double memMB = static_cast<double>(file.bytes) / kBytesPerMB;
    const bool isModel = isModelFile(file.path);
    if (isModel) read.modelMB += memMB;
    if (read.largest.size() == kMostFiles) continue;
    read.largest.push_back(
        {CredentialMask::maskedLine(text::lastPathComponent(file.path)), memMB, isModel});
  }
  return read;
}

}  // namespace

void sampleMapped(std::int32_t pid, double footprintMB, bool isOwn,
                  std::unique_ptr<MappedFilesRead>& known, std::optional<MappedMemory>& memory) {
  const auto shared = platform::sharedMemory(pid);
  const double mappedMB = shared ? worthAWord(shared->fileBytes, footprintMB) : 0;
  const double sharedMB = shared ? worthAWord(shared->sharedBytes, footprintMB) : 0;
  if (mappedMB == 0 && sharedMB == 0) return memory.reset();
  if (!memory) memory.emplace();
  memory->mappedMB = mappedMB;
  memory->sharedMB = sharedMB;
  memory->modelMB = 0;
  if (mappedMB == 0 || !isOwn) return memory->files.clear();
  const std::uint64_t now = platform::processClock();
  if (!known || now < known->at || now - known->at >= kMappedFilesStand) {
    known = std::make_unique<MappedFilesRead>(readFiles(pid, now));
  }
  memory->files = known->largest;
  if (!memory->files.empty() && memory->files.front().isModel) {
    memory->modelMB = std::min(known->modelMB, memory->mappedMB);
  }
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
