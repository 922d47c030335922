#include "scanner/roles/role_by_words.h"

#include "scanner/command_line/arguments.h"
#include "scanner/process_scanner.h"
#include "text/contains.h"
#include "text/path.h"
#include "text/unicode.h"

namespace ProcessScanner {
namespace {

/// Whether this kind of program can train at all.
bool mayTrain(std::string_view exe, const SearchedLine& line) {
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

bool hasTrainSignal(const SearchedLine& line) {
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

/// Evidence of LoRA in a line without a training marker. (Beside such a marker "lora" or "adapter"
/// would count, too, but then the marker alone decides.)
bool hasLoraSignal(const SearchedLine& line) {
  return line.hasAny(kLoraMarkers) ||
         (line.hasAny({"peft", "mlx_lm"}) && line.anyArgument(namesLora));
}

/// Whether it trains or fine-tunes a model. `isServing` tells whether it looks like a server; it is
/// asked only where there is no evidence but LoRA, which a server with an adapter shows too.
template <typename Test>
bool trains(std::string_view exe, const SearchedLine& line, Test isServing) {
  if (!mayTrain(exe, line)) return false;
  if (hasTrainSignal(line) || line.hasAny(kFrameworkMarkers)) return true;
  if (!hasLoraSignal(line)) return false;
  const bool holdsEvenForServer = !line.has("lora") || line.hasAny(kLoraMarkers);
  return holdsEvenForServer || !isServing();
}

bool looksLikeServer(const SearchedLine& line) {
  return line.hasAny({"serve", "server", "llama-server", "openai-compat"}) ||
         line.hasArgument("generate");
}

bool infers(std::string_view exe, const SearchedLine& line) {
  if (line.has("llama-server") || exe == "llama-server") return true;
  if (line.has("llama.cpp") && line.has("server")) return true;
  if (line.has("rapid-mlx")) return true;
  if (line.hasAny({"mlx", "mlx_lm", "mlx-lm"}) &&
      (line.hasAny({"serve", "server"}) || line.hasArgument("generate"))) {
    return true;
  }
  if (exe == "ollama" || line.has("ollama serve")) return true;
  if (line.has("/ollama") && line.has("serve")) return true;
  if (line.hasAny({"lmstudio", ".lmstudio", "lms server", "vllm", "text-generation-inference",
                   "tgi ", "localai", "jan.ai", "oobabooga", "textgen", "tabbyapi", "kobold"})) {
    return true;
  }
  // A model file or repository is named, and something listens.
  return line.hasAny({".gguf", ".safetensors", "mlx-community/"}) &&
         line.hasAny({"serve", "server", "--port", "host"});
}

bool isAgent(std::string_view exe, const SearchedLine& line) {
  if (line.has("mcp") && line.hasAny({"server", "-m ", "stdio"})) return true;
  if (line.hasAny({"langchain", "langgraph", "autogen", "crewai", "openinterpreter"})) return true;
  if ((exe == "node" || exe == "nodejs") && line.has("gateway")) return true;
  return line.hasAny({"jupyter", "ipython"});
}

}  // namespace

const std::set<std::string_view>& wrapperExecutables() {
  static const std::set<std::string_view> names{"bash",       "zsh",   "sh",   "fish",    "tee",
                                                "caffeinate", "nohup", "nice", "timeout", "script"};
  return names;
}

LabRole roleOf(std::string_view exe, const SearchedLine& line) {
  if (wrapperExecutables().contains(exe)) return LabRole::none;
  // Training first: a training run that mentions a server is still training.
  if (trains(exe, line, [&line] { return looksLikeServer(line); })) return LabRole::training;
  if (infers(exe, line)) return LabRole::inference;
  if (isAgent(exe, line)) return LabRole::agent;
  return LabRole::none;
}

LabRole classifyLabRole(std::string_view name, std::span<const std::string> cmdline,
                        std::string_view joined) {
  const auto arguments = recognition::viewsOf(cmdline);
  SearchedLine line;
  line.read(arguments, joined);
  return roleOf(text::lowered(text::lastPathComponent(name)), line);
}

bool isTrainingProcess(std::string_view exe, std::string_view lower,
                       std::span<const std::string> args, bool isServing) {
  const auto arguments = recognition::viewsOf(args);
  SearchedLine line;
  line.readLowered(arguments, lower);
  return trains(exe, line, [isServing] { return isServing; });
}

}  // namespace ProcessScanner
