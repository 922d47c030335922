#include "reference/process_rules.h"
#include "reference/text_rules.h"
#include "text/unicode.h"

namespace reference {
namespace {

using Name = std::pair<std::string, std::string>;

std::string plusPort(const Strings& cmdline) {
  const auto port = flag(cmdline, {"--port"});
  return port ? "  (:" + *port + ")" : "";
}

/// Where the model options are looked up.
Strings programOptions(const Strings& cmdline) {
  if (!beginsWith(lower(lastPathComponent(cmdline[0])), "python")) return cmdline;
  std::size_t i = 1;
  while (i < cmdline.size()) {
    if (cmdline[i] == "-m") {
      Strings rest;
      for (std::size_t k = i + 2; k < cmdline.size(); ++k) rest.push_back(cmdline[k]);
      return rest;
    }
    if (!beginsWith(cmdline[i], "-")) return cmdline;
    i += cmdline[i] == "-W" || cmdline[i] == "-X" ? 2 : 1;
  }
  return cmdline;
}

std::optional<std::string> mlxModel(const Strings& cmdline) {
  for (std::size_t i = 0; i + 1 < cmdline.size(); ++i) {
    if (cmdline[i] != "serve" && cmdline[i] != "run") continue;
    if (!beginsWith(cmdline[i + 1], "-")) return cmdline[i + 1];
  }
  return flag(programOptions(cmdline), {"--model", "-m", "--served-model-name"});
}

std::optional<std::string> bundle(const std::string& argument) {
  // The leftmost match of "/", then anything but "/", then ".app/".
  for (std::size_t start = 0; start < argument.size(); ++start) {
    if (argument[start] != '/') continue;
    std::size_t end = start + 1;
    while (end < argument.size() && argument[end] != '/') ++end;
    if (end == argument.size()) return std::nullopt;
    std::string piece = argument.substr(start + 1, end - start - 1);
    if (!endsWith(piece, ".app") || piece == ".app") continue;
    std::string name;
    while (!piece.empty()) {
      const std::size_t drop = beginsWith(piece, ".app") ? 4 : 0;
      if (drop == 0) name += piece[0];
      piece.erase(0, drop == 0 ? 1 : drop);
    }
    return name;
  }
  return std::nullopt;
}

bool isModelArgument(const std::string& argument) {
  const std::string text = lower(argument);
  if (contains(text, "mlx-community")) return true;
  if (contains(text, "huggingface") || endsWith(text, ".safetensors")) return true;
  if (!contains(text, "/")) return false;
  return containsAny(text, {"llama", "qwen", "mistral", "phi", "gemma"});
}

Name trainingName(const Strings& cmdline, const std::string& lower) {
  std::optional<std::string> model =
      flag(programOptions(cmdline),
           {"--model", "-m", "--base-model", "--base_model", "--model-name", "--model_name"});
  for (std::size_t i = 1; !model && i < cmdline.size(); ++i) {
    if (isModelArgument(cmdline[i])) model = cmdline[i];
  }
  const std::string plusMN = model ? ": " + basenameModel(*model) : "";

  // T1 to T9
  if (containsAny(lower, {"qlora", "q-lora", "q_lora"})) {
    return {"QLoRA fine-tune" + plusMN, "Fine-tune"};
  }
  if (containsAny(lower, {"mlx_lm.lora", "mlx-lm.lora", "mlx_lm lora", "mlx-lm lora"})) {
    return {"LoRA fine-tune" + plusMN, "Fine-tune"};
  }
  if (contains(lower, "lora") &&
      containsAny(lower, {"train", "finetune", "fine-tune", "peft", "--lora", "qlora"})) {
    return {"LoRA fine-tune" + plusMN, "Fine-tune"};
  }
  if (containsAny(lower, {"finetune", "fine-tune", "fine_tune", "finetuning", "sft"})) {
    return {"Fine-tune" + plusMN, "Fine-tune"};
  }
  if (contains(lower, "dpo")) return {"DPO train" + plusMN, "Fine-tune"};
  if (contains(lower, "unsloth")) return {"Unsloth fine-tune" + plusMN, "Fine-tune"};
  if (contains(lower, "axolotl")) return {"Axolotl train", "Fine-tune"};
  if (containsAny(lower, {"llamafactory", "llama-factory"})) return {"Llama-Factory", "Fine-tune"};
  if (contains(lower, "torchtune")) return {"TorchTune", "Fine-tune"};
  // T10
  for (const auto& argument : cmdline) {
    if (endsWith(argument, ".py") &&
        containsAny(reference::lower(argument),
                    {"train", "finetune", "fine_tune", "sft", "lora", "dpo"})) {
      return {"Training: " + lastPathComponent(argument), "Training"};
    }
  }
  // T11 to T13
  if (contains(lower, "torchrun")) return {"Training: torchrun", "Training"};
  if (contains(lower, "accelerate")) return {"Training: accelerate", "Training"};
  if (model) return {"Training: " + basenameModel(*model), "Training"};
  return {"Model training", "Training"};
}

}  // namespace

std::pair<std::string, std::string> friendlyName(const Strings& cmdline,
                                                 const std::string& fallback) {
  // 0
  if (cmdline.empty()) return {fallback, "Process"};
  const std::string line = joined(cmdline);
  const std::string lower = reference::lower(line);
  const std::string exe = lastPathComponent(cmdline[0]);
  // 1
  if (contains(lower, "llama-server") || exe == "llama-server") {
    const auto model = flag(programOptions(cmdline), {"--model", "-m"});
    return {"LM Studio: " + basenameModel(model ? *model : "LLM") + plusPort(cmdline), "LM Studio"};
  }
  // 2
  if (contains(lower, "rapid-mlx") || (contains(lower, "mlx") && contains(lower, "serve"))) {
    const auto model = mlxModel(cmdline);
    return {"MLX Server: " + basenameModel(model ? *model : "MLX model") + plusPort(cmdline),
            "MLX"};
  }
  // 3
  if (contains(lower, "/.hermes/") || contains(lower, "hermes_cli") || exe == "hermes") {
    if (contains(lower, "gateway")) return {"Hermes Gateway", "Hermes"};
    if (contains(lower, "agent")) return {"Hermes Agent", "Hermes"};
    return {"Hermes", "Hermes"};
  }
  // 4
  if (exe == "ollama" || contains(lower, "/ollama")) {
    return {contains(lower, "serve") ? "Ollama Server" : "Ollama", "Ollama"};
  }
  // 5
  if (contains(lower, "/.brevik/") || exe == "brevik") {
    return {contains(lower, "dashboard") ? "Brevik Dashboard" : "Brevik", "Brevik"};
  }
  // 6
  if (contains(lower, "zentho.mcp") || contains(lower, "-m zentho")) {
    return {contains(lower, "mcp") ? "Zentho MCP Server" : "Zentho", "Zentho"};
  }
  // 7
  if (classifyLabRole(exe, cmdline, line) == LabRole::training) return trainingName(cmdline, lower);
  // 8
  if (contains(lower, "com.docker.vmnet") || exe == "com.docker.vmnetd") {
    return {"Docker network helper (root)", "Docker"};
  }
  // 9
  if (contains(lower, "com.docker.backend") || exe == "com.docker.backend") {
    return {"Docker Desktop backend", "Docker"};
  }
  // 10
  if (contains(lower, "/Docker.app/") || contains(lower, "com.docker.")) {
    return {"Docker Desktop", "Docker"};
  }
  // 11
  if (exe == "containermanagerd" || contains(lower, "containermanagerd")) {
    return {"Apple containermanagerd", "System"};
  }
  // 12
  for (const auto& argument : cmdline) {
    if (const auto name = bundle(argument)) return {*name, "App"};
  }
  // 13
  if (beginsWith(exe, "python")) {
    for (std::size_t i = 0; i < cmdline.size(); ++i) {
      if (cmdline[i] != "-m") continue;
      if (i + 1 < cmdline.size()) return {"Python: " + cmdline[i + 1], "Python"};
      break;
    }
    for (std::size_t i = 1; i < cmdline.size(); ++i) {
      if (endsWith(cmdline[i], ".py")) {
        return {"Python: " + lastPathComponent(cmdline[i]), "Python"};
      }
    }
  }
  // 14
  return {!exe.empty() ? exe : fallback, "Process"};
}

std::string basenameModel(const std::string& model) {
  std::string name = lastPathComponent(model);
  for (const std::string suffix : {".gguf", ".safetensors", ".bin", ".pt", ".pth", ".mlx"}) {
    if (!endsWith(lower(name), suffix)) continue;
    name = text::firstCharacters(name, text::characterCount(name) - suffix.size());
  }
  for (auto& c : name) {
    if (c == '_') c = ' ';
  }
  for (auto& c : name) {
    if (c == '-') c = ' ';
  }
  if (text::characterCount(name) < 49) return name.empty() ? "Unknown model" : name;
  return std::string(text::firstCharacters(name, 45)) + "…";
}

}  // namespace reference
