#include "reference/process_rules.h"
#include "reference/text_rules.h"

namespace reference {

namespace {

bool gate(const std::string& exe, const std::string& lower) {
  if (contains(exe, "python")) return true;
  if (contains(exe, "torch")) return true;
  if (containsAny(lower, {"python", "mlx", "jax", "torchrun"})) return true;
  if (exe == "accelerate") return true;
  if (contains(exe, "deepspeed")) return true;
  if (exe == "axolotl") return true;
  return containsAny(
      lower, {"unsloth", "llamafactory", "llama-factory", "torchtune", "litgpt", "autotrain"});
}

bool trainSignal(const std::string& lower, const Strings& args) {
  if (containsAny(lower, trainingMarkers)) return true;
  for (const std::string element : {"train", "finetune", "fine-tune", "--train"}) {
    if (isElement(args, element)) return true;
  }
  for (const auto& arg : args) {
    const std::string file = lastPathComponent(arg);
    if (endsWith(arg, ".py") && (beginsWith(file, "train_") || beginsWith(file, "train-"))) {
      return true;
    }
  }
  return false;
}

bool loraSignal(const std::string& lower, const Strings& args, bool T) {
  if (containsAny(lower, loraMarkers)) return true;
  if (contains(lower, "lora") && T) return true;
  if (contains(lower, "adapter") && T) return true;
  for (const auto& arg : args) {
    if (!contains(arg, "lora") || endsWith(arg, ".gguf") || endsWith(arg, ".safetensors")) continue;
    if (T || contains(lower, "peft") || contains(lower, "mlx_lm")) return true;
  }
  return false;
}

}  // namespace

bool isTrainingProcess(const std::string& exe, const std::string& lower, const Strings& args,
                       bool isServing) {
  if (!gate(exe, lower)) return false;
  const bool T = trainSignal(lower, args);
  const bool L = loraSignal(lower, args, T);
  const bool F = containsAny(lower, frameworkMarkers);
  if (!isServing) return T || L || F;
  if (T) return true;
  if (F) return true;
  if (L) return !contains(lower, "lora") || containsAny(lower, loraMarkers);
  return false;
}

}  // namespace reference
