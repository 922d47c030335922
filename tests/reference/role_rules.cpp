#include "reference/process_rules.h"
#include "reference/text_rules.h"

namespace reference {

LabRole classifyLabRole(const std::string& name, const Strings& cmdline,
                        const std::string& joined) {
  // 1
  const std::string exe = lower(lastPathComponent(name));
  if (isElement(
          {"bash", "zsh", "sh", "fish", "tee", "caffeinate", "nohup", "nice", "timeout", "script"},
          exe)) {
    return LabRole::none;
  }
  // 2
  const std::string lower = reference::lower(joined);
  const Strings args = reference::lower(cmdline);
  // 3
  const bool hint = contains(lower, "serve") || contains(lower, "server") ||
                    contains(lower, "llama-server") || contains(lower, "openai-compat") ||
                    isElement(args, "generate");
  // 4
  if (isTrainingProcess(exe, lower, args, hint)) return LabRole::training;
  // 5
  if (contains(lower, "llama-server") || exe == "llama-server") return LabRole::inference;
  // 6
  if (contains(lower, "llama.cpp") && contains(lower, "server")) return LabRole::inference;
  // 7
  if (contains(lower, "rapid-mlx")) return LabRole::inference;
  // 8
  if (contains(lower, "mlx") || contains(lower, "mlx_lm") || contains(lower, "mlx-lm")) {
    if (contains(lower, "serve") || contains(lower, "server") || isElement(args, "generate")) {
      return LabRole::inference;
    }
  }
  // 9
  if (exe == "ollama" || contains(lower, "ollama serve")) return LabRole::inference;
  // 10
  if (contains(lower, "/ollama") && contains(lower, "serve")) return LabRole::inference;
  // 11
  if (containsAny(lower, serverMarkers)) {
    return LabRole::inference;
  }
  // 12
  if (containsAny(lower, {".gguf", ".safetensors", "mlx-community/"})) {
    if (containsAny(lower, {"serve", "server", "--port", "host"})) return LabRole::inference;
  }
  // 13
  if (contains(lower, "mcp")) {
    if (contains(lower, "server") || contains(lower, "-m ") || contains(lower, "stdio")) {
      return LabRole::agent;
    }
  }
  // 14
  if (containsAny(lower, agentMarkers)) {
    return LabRole::agent;
  }
  // 15
  if ((exe == "node" || exe == "nodejs") && contains(lower, "gateway")) return LabRole::agent;
  // 16
  if (contains(lower, "jupyter") || contains(lower, "ipython")) return LabRole::agent;
  // 17
  return LabRole::none;
}

std::optional<std::string> flag(const Strings& arguments, const Strings& names) {
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    for (const auto& name : names) {
      const bool isLast = i == arguments.size() - 1;
      if (arguments[i] == name && !isLast) return arguments[i + 1];
      if (beginsWith(arguments[i], name + "=")) return arguments[i].substr(name.size() + 1);
    }
  }
  return std::nullopt;
}

}  // namespace reference
