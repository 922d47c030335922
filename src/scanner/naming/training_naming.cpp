#include <algorithm>
#include <optional>

#include "scanner/command_line/arguments.h"
#include "scanner/command_line/model_options.h"
#include "scanner/naming/friendly_naming.h"
#include "text/contains.h"
#include "text/path.h"
#include "text/unicode.h"

namespace ProcessScanner {
namespace {

using recognition::Arguments;

/// A way to train: shown when the line holds any of `evidence` and, unless it is empty, any of
/// `together`.
struct Method {
  MarkerSet evidence;
  MarkerSet together;
  std::string_view name;
  bool isShownWithModel = false;
};

constexpr bool kWithModel = true;

/// In this order: an Unsloth run that does DPO shows as DPO.
constexpr Method kMethods[] = {
    {{"qlora", "q-lora", "q_lora"}, {}, "QLoRA fine-tune", kWithModel},
    {{"mlx_lm.lora", "mlx-lm.lora", "mlx_lm lora", "mlx-lm lora"},
     {},
     "LoRA fine-tune",
     kWithModel},
    // A line with "qlora" never gets here: the first row takes it.
    {"lora",
     {"train", "finetune", "fine-tune", "peft", "--lora", "qlora"},
     "LoRA fine-tune",
     kWithModel},
    {{"finetune", "fine-tune", "fine_tune", "finetuning", "sft"}, {}, "Fine-tune", kWithModel},
    {"dpo", {}, "DPO train", kWithModel},
    {"unsloth", {}, "Unsloth fine-tune", kWithModel},
    {"axolotl", {}, "Axolotl train"},
    {{"llamafactory", "llama-factory"}, {}, "Llama-Factory"},
    {"torchtune", {}, "TorchTune"},
};

/// Whether an argument that is no option's value looks like a model. `argument`: lower case.
bool looksLikeModelPath(std::string_view argument) {
  if (text::containsAny(argument, {"mlx-community", "huggingface"})) return true;
  if (argument.ends_with(".safetensors")) return true;
  return text::contains(argument, "/") &&
         text::containsAny(argument, {"llama", "qwen", "mistral", "phi", "gemma"});
}

std::optional<std::string> modelOfTraining(Arguments arguments) {
  constexpr std::string_view kOptions[] = {"--model",      "-m",           "--base-model",
                                           "--base_model", "--model-name", "--model_name"};
  if (const auto model = modelOption(arguments, kOptions)) return basenameModel(*model);
  for (const std::string_view argument :
       arguments.subspan(std::min<std::size_t>(1, arguments.size()))) {
    if (looksLikeModelPath(text::lowered(argument))) return basenameModel(argument);
  }
  return std::nullopt;
}

bool isScriptAboutTraining(std::string_view argument) {
  return argument.ends_with(".py") &&
         text::containsAny(text::lowered(argument),
                           {"train", "finetune", "fine_tune", "sft", "lora", "dpo"});
}

FriendlyName training(std::string_view what) {
  return {"Training: " + std::string(what), "Training"};
}

}  // namespace

FriendlyName trainingName(const SearchedLine& line) {
  const Arguments arguments = line.arguments();
  const auto model = modelOfTraining(arguments);

  for (const Method& method : kMethods) {
    if (!line.hasAny(method.evidence)) continue;
    if (!method.together.empty() && !line.hasAny(method.together)) continue;
    std::string name(method.name);
    if (method.isShownWithModel && model) name += ": " + *model;
    return {std::move(name), "Fine-tune"};
  }

  const auto script = std::ranges::find_if(arguments, isScriptAboutTraining);
  if (script != arguments.end()) return training(text::lastPathComponent(*script));
  if (line.has("torchrun")) return training("torchrun");
  if (line.has("accelerate")) return training("accelerate");
  if (model) return training(*model);
  return {"Model training", "Training"};
}

}  // namespace ProcessScanner
