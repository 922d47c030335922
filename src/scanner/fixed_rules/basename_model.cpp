#include <algorithm>

#include "scanner/process_scanner.h"
#include "text/path.h"
#include "text/unicode.h"

namespace ProcessScanner {
namespace {

constexpr std::string_view kWeightFileSuffixes[] = {".gguf", ".safetensors", ".bin",
                                                    ".pt",   ".pth",         ".mlx"};

std::string_view withoutLastCharacters(std::string_view text, std::size_t count) {
  return text::firstCharacters(text, text::characterCount(text) - count);
}

}  // namespace

std::string basenameModel(std::string_view model) {
  constexpr std::size_t kMostCharacters = 48;
  constexpr std::size_t kKeptOfLonger = 45;

  std::string_view base = text::lastPathComponent(model);
  // Each ending is removed once, in this order: from "x.mlx.gguf" both, from "x.gguf.mlx" only
  // ".mlx".
  for (const std::string_view suffix : kWeightFileSuffixes) {
    if (text::lowered(base).ends_with(suffix)) base = withoutLastCharacters(base, suffix.size());
  }
  if (base.empty()) return "Unknown model";
  std::string name(base);
  std::ranges::replace(name, '_', ' ');
  std::ranges::replace(name, '-', ' ');
  return text::shortened(name, kMostCharacters, kKeptOfLonger);
}

}  // namespace ProcessScanner
