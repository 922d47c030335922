#include "scanner/fixed_rules/rules.h"
#include "text/contains.h"
#include "text/path.h"

namespace ProcessScanner {
namespace {

/// Whether this kind of program can train at all.
bool mayTrain(std::string_view exe, const CommandLine& line) {
  return text::containsAny(exe, {"python", "torch", "deepspeed"}) || exe == "accelerate" ||
         exe == "axolotl" ||
         line.hasAny({"python", "mlx", "jax", "torchrun", "unsloth", "llamafactory",
                      "llama-factory", "torchtune", "litgpt", "autotrain"});
}

/// train_lora.py, train-8b.py
bool isTrainingScript(std::string_view argument) {
  const std::string_view name = text::lastPathComponent(argument);
  return argument.ends_with(".py") && (name.starts_with("train_") || name.starts_with("train-"));
}

bool hasTrainSignal(const CommandLine& line) {
  return line.hasAny(kTrainingMarkers) || line.anyArgument([](std::string_view argument) {
    return argument == "train" || argument == "finetune" || argument == "fine-tune" ||
           argument == "--train" || isTrainingScript(argument);
  });
}

bool namesLora(std::string_view argument) {
  // A weights file with LoRA in its name may be served as well as trained.
  return text::contains(argument, "lora") && !argument.ends_with(".gguf") &&
         !argument.ends_with(".safetensors");
}

/// Signs of LoRA in a line without a training marker. (Beside such a marker "lora" or "adapter"
/// would count too, but then the marker alone decides.)
bool hasLoraSignal(const CommandLine& line) {
  return line.hasAny(kLoraMarkers) ||
         (line.hasAny({"peft", "mlx_lm"}) && line.anyArgument(namesLora));
}

}  // namespace

Training trainingOf(std::string_view exe, const CommandLine& line) {
  if (!mayTrain(exe, line)) return Training::no;
  if (hasTrainSignal(line) || line.hasAny(kFrameworkMarkers)) return Training::yes;
  if (!hasLoraSignal(line)) return Training::no;
  const bool holdsEvenForServer = !line.has("lora") || line.hasAny(kLoraMarkers);
  return holdsEvenForServer ? Training::yes : Training::unlessServing;
}

bool isTrainingProcess(std::string_view exe, std::string_view lower,
                       std::span<const std::string> args, bool isServing) {
  const auto arguments = viewsOf(args);
  CommandLine line;
  line.readLowered(arguments, lower);
  const Training training = trainingOf(exe, line);
  return training == Training::yes || (training == Training::unlessServing && !isServing);
}

}  // namespace ProcessScanner
