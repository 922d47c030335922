#include "scanner/naming/model_name.h"

#include <algorithm>

#include "scanner/command_line/program_names.h"
#include "scanner/process_scanner.h"
#include "text/ascii.h"
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

namespace recognition {

std::string modelName(std::string_view model) {
  // A model in the hub's cache: …/models--org--name/snapshots/REVISION
  constexpr std::string_view kCached = "models--";
  if (const auto cached = model.find(kCached); cached != std::string_view::npos) {
    std::string_view name = model.substr(cached + kCached.size());
    name = name.substr(0, name.find('/'));
    const auto organization = name.find("--");
    if (organization != std::string_view::npos) name = name.substr(organization + 2);
    return ProcessScanner::basenameModel(name);
  }
  while (model.size() > 1 && model.ends_with('/')) model.remove_suffix(1);
  // A model of a registry: models:/NAME/STAGE
  constexpr std::string_view kRegistered = "models:/";
  if (model.starts_with(kRegistered)) {
    model.remove_prefix(kRegistered.size());
    model = model.substr(0, model.find('/'));
  }
  std::string_view base = text::lastPathComponent(model);
  constexpr std::string_view kLatest = ":latest";
  if (base.size() > kLatest.size() && base.ends_with(kLatest)) {
    base.remove_suffix(kLatest.size());
  }
  // A service in a module: package.module:Service, service.py:svc
  const auto colon = base.rfind(':');
  constexpr std::string_view kSource = ".py:";
  if (const auto source = base.find(kSource); source != std::string_view::npos && source > 0) {
    base = colon + 1 < base.size() && text::isUpper(base[colon + 1]) ? base.substr(colon + 1)
                                                                     : base.substr(0, source);
  } else if (base.size() == model.size() && colon != std::string_view::npos &&
             colon + 1 < base.size() && text::isUpper(base[colon + 1])) {
    base.remove_prefix(colon + 1);
  }
  // "ggml-small.en.bin" is "small.en"; but "ggml-model" says no more without it.
  if (base.starts_with("ggml-") && base.size() > 5 && !base.starts_with("ggml-model")) {
    base.remove_prefix(5);
  }
  for (const std::string_view ending :
       {"-GGUF", "-gguf", "-MLC", ".llamafile", ".yaml", ".yml", ".json", ".toml", ".onnx"}) {
    if (base.size() > ending.size() && base.ends_with(ending)) base.remove_suffix(ending.size());
  }
  std::string name = ProcessScanner::basenameModel(base);
  std::ranges::replace(name, ':', ' ');
  return name;
}

std::string recipeName(std::string_view path) {
  std::string_view file = text::lastPathComponent(path);
  for (const std::string_view ending : {".yaml", ".yml", ".toml", ".json", ".cfg", ".py"}) {
    if (file.ends_with(ending)) file.remove_suffix(ending.size());
  }
  std::string name = ProcessScanner::basenameModel(file);
  // "llama3_1/8B_lora": of a recipe that begins with a size the folder says of what.
  const auto folder = path.find_last_of('/');
  if (!name.empty() && text::isDigit(name.front()) && folder != std::string_view::npos) {
    const std::string_view parent = text::lastPathComponent(path.substr(0, folder));
    const auto words = wordsOf(parent);
    const bool isGeneral = std::ranges::any_of(words, [](std::string_view word) {
      return isListed("configs config recipes conf examples train", word);
    });
    if (!parent.empty() && text::isLetter(parent.front()) && !isGeneral) {
      return ProcessScanner::basenameModel(std::string(parent) + " " + name);
    }
  }
  return name;
}

}  // namespace recognition
