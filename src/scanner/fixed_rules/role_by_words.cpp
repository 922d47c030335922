#include "scanner/fixed_rules/rules.h"
#include "text/path.h"
#include "text/unicode.h"

namespace ProcessScanner {
namespace {

bool looksLikeServer(const CommandLine& line) {
  return line.hasAny({"serve", "server", "llama-server", "openai-compat"}) ||
         line.hasArgument("generate");
}

bool trains(std::string_view exe, const CommandLine& line) {
  const Training training = trainingOf(exe, line);
  return training == Training::yes ||
         (training == Training::unlessServing && !looksLikeServer(line));
}

bool infers(std::string_view exe, const CommandLine& line) {
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

bool isAgent(std::string_view exe, const CommandLine& line) {
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

LabRole roleOf(std::string_view exe, const CommandLine& line) {
  if (wrapperExecutables().contains(exe)) return LabRole::none;
  // Training first: a training run that mentions a server is still training.
  if (trains(exe, line)) return LabRole::training;
  if (infers(exe, line)) return LabRole::inference;
  if (isAgent(exe, line)) return LabRole::agent;
  return LabRole::none;
}

LabRole classifyLabRole(std::string_view name, std::span<const std::string> cmdline,
                        std::string_view joined) {
  const auto arguments = viewsOf(cmdline);
  CommandLine line;
  line.read(arguments, joined);
  return roleOf(text::lowered(text::lastPathComponent(name)), line);
}

}  // namespace ProcessScanner
