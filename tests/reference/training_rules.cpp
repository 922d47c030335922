#include "reference/process_rules.h"
#include "reference/text_rules.h"

namespace reference {

const Strings trainingMarkers{"train.py",
                              "finetune.py",
                              "fine_tune.py",
                              "fine-tune.py",
                              "sft.py",
                              "dpo.py",
                              "pretrain.py",
                              "pre_train.py",
                              "rlhf.py",
                              "orpo.py",
                              "kto.py",
                              "grpo.py",
                              "finetune",
                              "fine-tune",
                              "fine_tune",
                              "finetuning",
                              "fine-tuning",
                              "fine_tuning",
                              "pretrain",
                              "pre-train",
                              "pre_train",
                              " train ",
                              "/train ",
                              "train/",
                              " train\t",
                              "--do-train",
                              "--do_train",
                              "do_train=true",
                              "--num-train",
                              "--num_train",
                              "--max-steps",
                              "--max_steps",
                              "--num-epochs",
                              "--num_epochs",
                              "--num-train-epochs",
                              "gradient_accumulation",
                              "grad_accum",
                              "grad_norm"};

const Strings loraMarkers{
    "mlx_lm.lora",    "mlx-lm.lora", "mlx_lm lora",  "mlx-lm lora",  "mlx.lora",
    "qlora",          "q-lora",      "q_lora",       "rslora",       "dora",
    "peft",           "lora_config", "lora-config",  "loraconfig",   "--lora-rank",
    "--lora_rank",    "--lora-r",    "--lora-alpha", "--lora_alpha", "--lora-dropout",
    "--lora_dropout", "--use-lora",  "--use_lora",   "lora_target",  "target_modules",
    "get_peft_model", "sfttrainer",  "dpotrainer",   "orpotrainer",  "rewardtrainer",
    "trl.trainer",    "trl sft",     "trl dpo",      "from trl"};

const Strings frameworkMarkers{"torchrun",
                               "accelerate launch",
                               "deepspeed",
                               "unsloth",
                               "axolotl",
                               "llamafactory",
                               "llama-factory",
                               "llama_factory",
                               "torchtune",
                               "litgpt",
                               "autotrain",
                               "ms-swift",
                               "swift sft",
                               "huggingface/transformers",
                               "transformers.trainer",
                               "pytorch_lightning",
                               "lightning.pytorch",
                               "bitsandbytes",
                               "trainer.train",
                               ".train(",
                               "openai/finetune",
                               "openai api fine_tunes"};

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
