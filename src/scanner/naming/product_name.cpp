#include "scanner/naming/product_name.h"

#include <algorithm>

#include "scanner/command_line/model_options.h"
#include "scanner/command_line/program_names.h"
#include "scanner/command_line/server_port.h"
#include "scanner/naming/model_name.h"
#include "scanner/roles/mcp_server.h"
#include "scanner/roles/self_made_server.h"
#include "text/ascii.h"
#include "text/path.h"
#include "text/unicode.h"

namespace recognition {
namespace {

using ProcessScanner::FriendlyName;

/// How a training trains, in the order of the word rules: the adapter before what is done with it.
std::string_view methodOf(const Activity& activity, const Invocation& invocation) {
  struct Method {
    std::string_view words;
    std::string_view name;
  };
  constexpr Method kMethods[] = {
      {"qlora", "QLoRA"},
      {"lora", "LoRA"},
      {"dora", "DoRA"},
      {"grpo", "GRPO"},
      {"dpo", "DPO"},
      {"kto", "KTO"},
      {"orpo", "ORPO"},
      {"ppo", "PPO"},
      {"rloo", "RLOO"},
      {"cpo", "CPO"},
      {"rlhf", "RLHF"},
      {"sft", "SFT"},
      {"rm reward", "reward model"},
      {"pretrain pretraining pt", "pretrain"},
      {"finetune finetuning full", "fine-tune"},
  };
  std::string words = activity.verb + ' ' + invocation.module + ' ' + invocation.script;
  const Arguments arguments =
      invocation.arguments.first(std::min<std::size_t>(invocation.arguments.size(), 256));
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string option = normalized(arguments[i]);
    const bool isMethod = isListed(
        "--tuner-type --train-type --rlhf-type --finetuning-type "
        "--training-type --stage",
        option);
    if (isMethod && i + 1 < arguments.size()) words += ' ' + normalized(arguments[i + 1]);
  }
  const auto subcommands = subcommandsOf(invocation);
  for (std::size_t i = 0; i < std::min<std::size_t>(subcommands.size(), 2); ++i) {
    if (isListed("lora qlora dora grpo dpo", subcommands[i])) words += ' ' + subcommands[i];
  }
  if (activity.verb == "run") {  // tune run --nproc_per_node 2 RECIPE
    std::string_view before;
    for (std::size_t i = 1; i < arguments.size(); ++i) {
      const bool isValue = before.starts_with('-') && before.find('=') == std::string_view::npos;
      before = arguments[i];
      if (before.starts_with('-') || isValue) continue;
      words += ' ' + normalized(before);
      break;
    }
  }
  const auto all = wordsOf(words);
  for (const Method& method : kMethods) {
    for (const std::string_view word : all) {
      if (isListed(method.words, word)) return method.name;
    }
  }
  return {};
}

/// What a script or module that is called after its method trains: "gpt" of pretrain_gpt.py.
std::string subjectOf(const Invocation& invocation, const Product& product) {
  constexpr std::string_view kSaysHow =
      "train training trainer pretrain pretraining finetune finetuning sft dpo grpo ppo lora qlora "
      "run main cli script scripts network db py";
  std::string_view name = invocation.script;
  if (!invocation.module.empty()) {
    name = std::string_view(invocation.module).substr(invocation.module.rfind('.') + 1);
  }
  const std::string own = normalized(product.name);
  const auto words = wordsOf(name);
  const bool isByMethod = std::ranges::any_of(words, [](std::string_view word) {
    return isListed("pretrain pretraining finetune finetuning sft", word);
  });
  if (!isByMethod) return {};
  std::string subject;
  for (const std::string_view word : words) {
    if (isListed(kSaysHow, word) || hasWord(own, word) || word == "megatron") continue;
    if (!subject.empty()) subject += ' ';
    subject += word;
  }
  return subject;
}

/// "ns-train splatfacto", "train act": a word right behind says what is trained.
std::string_view bareOperand(const Invocation& invocation, const Activity& activity) {
  const Arguments arguments = invocation.arguments;
  std::size_t at = 0;
  if (!activity.verb.empty()) {
    while (at < arguments.size() && normalized(arguments[at]) != activity.verb) ++at;
    ++at;
  }
  if (at >= arguments.size()) return {};
  const std::string_view word = arguments[at];
  const bool isBare = !word.empty() && text::isLetter(word.front()) && word.size() <= 48 &&
                      word.find_first_of("/=:. {\"'") == std::string_view::npos;
  return isBare ? word : std::string_view();
}

/// A subcommand as it is shown: the shortest are abbreviations.
std::string shownVerb(std::string_view verb) {
  if (verb == "api") return "API";
  return std::string(verb);
}

std::string productTrainingName(const Product& product, const Activity& activity,
                                const Invocation& invocation) {
  std::string name(activity.name.empty() ? product.name : activity.name);
  const std::string_view method = methodOf(activity, invocation);
  const bool saysAlready = name.find(' ') != std::string::npos;
  if (!method.empty() && !saysAlready) name += " " + std::string(method);
  // "finetune MODEL"; but "run RECIPE"
  const bool takesOperand = !activity.verb.empty() && activity.verb != "run";
  const std::string_view verb = takesOperand ? std::string_view(activity.verb) : "\n";
  if (const auto model = modelOf(invocation, product.modelOptions, verb)) {
    name += ": " + modelName(*model);
  } else if (const auto recipe = recipeOf(invocation)) {
    name += ": " + recipeName(*recipe);
  } else if (const std::string_view word = bareOperand(invocation, activity);
             !word.empty() && activity.verb != "run") {
    name += ": " + ProcessScanner::basenameModel(word);
  } else if (const std::string subject = subjectOf(invocation, product); !subject.empty()) {
    name += ": " + ProcessScanner::basenameModel(subject);
  }
  return name;
}

/// Whether the name tells only the launcher, and nothing of what it trains.
bool isLauncherAlone(std::string_view name) {
  return name == "Training: torchrun" || name == "Training: accelerate";
}

}  // namespace

std::optional<FriendlyName> productName(const Product& product, const Activity& activity,
                                        const Invocation& invocation) {
  if (product.naming == Naming::byRules || product.name.empty()) return std::nullopt;
  const std::string group(product.name);
  const std::string port =
      portSuffix(invocation, product.portOptions, activity.role.value_or(LabRole::none));
  if (activity.role == LabRole::none) {
    if (!activity.name.empty()) return FriendlyName{std::string(activity.name), group};
    if (activity.verb.empty() || activity.verb.front() == '-') return std::nullopt;
    return FriendlyName{group + " " + activity.verb, group};
  }
  if (product.naming == Naming::tool) {
    if (servesMcp(invocation)) return FriendlyName{"MCP: " + group + port, "MCP"};
    if (group.starts_with("MCP")) {
      if (auto server = proxiedMcpServerName(invocation)) {
        if (server->displayName.find("  (:") == std::string::npos) server->displayName += port;
        return server;
      }
    }
    const std::string name(activity.name.empty() ? product.name : activity.name);
    return FriendlyName{name + port, group};
  }
  if (activity.role == LabRole::training) {
    return FriendlyName{productTrainingName(product, activity, invocation), group};
  }
  std::string name(activity.name.empty() ? product.name : activity.name);
  const auto model = modelOf(invocation, product.modelOptions, activity.verb);
  if (model) {
    name += ": " + modelName(*model);
  } else if (product.role == LabRole::training) {
    if (!activity.verb.empty() && activity.name.empty()) name += " " + shownVerb(activity.verb);
    const auto recipe = recipeOf(invocation);
    if (recipe && activity.verb != "inference") name += ": " + recipeName(*recipe);
  } else if (const auto recipe = recipeOf(invocation); recipe && product.role != LabRole::agent) {
    name += ": " + recipeName(*recipe);
  } else if (port.empty() && invocation.isPython && !invocation.module.empty() &&
             invocation.script.empty() && activity.name.empty()) {
    // Nothing more is known: the module's own name, which the word rules show, says more.
    return std::nullopt;
  } else if (invocation.program.ends_with(".llamafile")) {
    name += ": " + modelName(invocation.path);
  }
  return FriendlyName{name + port, group};
}

std::optional<FriendlyName> lightningName(const Invocation& invocation) {
  const Arguments arguments = invocation.arguments;
  if (invocation.script.empty() || arguments.empty() || arguments.front() != "fit") {
    return std::nullopt;
  }
  const auto recipe = recipeOf(invocation);
  if (!recipe) return std::nullopt;
  return FriendlyName{"Lightning fit: " + recipeName(*recipe), "Lightning"};
}

std::optional<FriendlyName> selfMadeServerName(const Invocation& invocation) {
  const std::string name = selfMadeServer(invocation);
  if (name.empty() || namesModel(invocation)) return std::nullopt;
  return FriendlyName{ProcessScanner::basenameModel(name) + portSuffix(invocation, ""),
                      "Model server"};
}

FriendlyName withModelAndPort(FriendlyName name, LabRole role, std::string_view modelOptions,
                              const Invocation& invocation) {
  const auto model = modelOf(invocation, modelOptions, "\n");
  // Behind what launches Python the rules take the module of "-m" for the model.
  const std::string moduleAsModel = invocation.module.empty()
                                        ? std::string()
                                        : ": " + ProcessScanner::basenameModel(invocation.path);
  if (model && !moduleAsModel.empty() && name.displayName.ends_with(moduleAsModel) &&
      !name.displayName.starts_with("Python")) {
    name.displayName.resize(name.displayName.size() - moduleAsModel.size());
    name.displayName += ": " + modelName(*model);
  }
  if (!model && !moduleAsModel.empty() && name.displayName == "Training" + moduleAsModel) {
    name.displayName = "Training: " + std::string(text::withinBytes(invocation.path, kLongestName));
  }
  if (role == LabRole::training) {
    // The rules show a recipe as they show a model, with its ending.
    for (const std::string_view ending : {".yaml", ".yml", ".toml"}) {
      if (name.displayName.ends_with(ending)) {
        name.displayName.resize(name.displayName.size() - ending.size());
      }
    }
    const auto recipe = recipeOf(invocation);
    const bool takesModel = name.product == "Fine-tune" &&
                            name.displayName.find(':') == std::string::npos &&
                            !isListed("Axolotl Llama-Factory TorchTune",
                                      name.displayName.substr(0, name.displayName.find(' ')));
    if (takesModel && (model || recipe)) {
      name.displayName += ": " + (model ? modelName(*model) : recipeName(*recipe));
    }
    const bool runs = !invocation.module.empty() || !invocation.script.empty();
    const std::string own = "Training: " + std::string(text::lastPathComponent(invocation.path));
    if (name.displayName == "Model training") {
      if (model) {
        name.displayName = "Training: " + modelName(*model);
      } else if (runs) {
        name.displayName = own;
      }
    } else if (runs && isLauncherAlone(name.displayName)) {
      name.displayName = model ? "Training: " + modelName(*model) : own;
    }
    return name;
  }
  // The rules read the launcher's words, too: "run python" of "uv run python -m mlx_lm.server".
  constexpr std::string_view kMlxServer = "MLX Server: ";
  if (model && invocation.waits && name.displayName.starts_with(kMlxServer)) {
    const auto end = std::min(name.displayName.find("  (:"), name.displayName.size());
    name.displayName.replace(kMlxServer.size(), end - kMlxServer.size(), modelName(*model));
  }
  for (const std::string_view unknown : {"LM Studio: LLM", "MLX Server: MLX model"}) {
    if (model && name.displayName.starts_with(unknown)) {
      name.displayName.replace(name.displayName.find(": ") + 2,
                               unknown.size() - unknown.find(": ") - 2, modelName(*model));
    }
  }
  if (role != LabRole::inference) return name;
  constexpr std::string_view kPython = "Python: ";
  if (model && name.displayName.starts_with(kPython)) {
    name.displayName.erase(0, kPython.size());
    name.displayName += ": " + modelName(*model) + portSuffix(invocation, "");
  }
  // A program that is written in Python is no Python to those who run it.
  const bool isInstalled = invocation.isPython && invocation.script.empty() &&
                           invocation.module.empty() &&
                           !isListed("python pypy", invocation.program);
  if (isInstalled && !invocation.isServedByHost && programName(name.displayName) == "python") {
    name.displayName = invocation.program + (model ? "" : portSuffix(invocation, ""));
  }
  if (!invocation.script.empty() && name.product == "Process") {
    name.displayName = text::withinBytes(text::lastPathComponent(invocation.path), kLongestName);
  }
  // A server that nobody knows is called by its program alone.
  if (model && name.product == "Process" && name.displayName.find(": ") == std::string::npos) {
    name.displayName += ": " + modelName(*model);
  }
  if (name.displayName.find("  (:") == std::string::npos &&
      name.displayName.find(": ") != std::string::npos && name.product != "Python") {
    name.displayName += portSuffix(invocation, "");
  }
  return name;
}

std::string rankSuffix(Arguments arguments) {
  const auto numberOf = [arguments](std::string_view names) -> std::string {
    for (std::size_t i = 0; i < std::min<std::size_t>(arguments.size(), 1024); ++i) {
      const std::string_view word = arguments[i];
      const auto equals = word.find('=');
      const std::string key = normalized(word.substr(0, equals));
      if (!isListed(names, key)) continue;
      const std::string_view value = equals != std::string_view::npos ? word.substr(equals + 1)
                                     : i + 1 < arguments.size()       ? arguments[i + 1]
                                                                      : std::string_view();
      const bool isNumber =
          !value.empty() && value.size() <= 5 && std::ranges::all_of(value, text::isDigit);
      if (isNumber) return std::string(value);
    }
    return {};
  };
  std::string rank = numberOf("--rank rank");
  if (rank.empty()) rank = numberOf("--local-rank local-rank");
  if (rank.empty()) return {};
  const std::string size = numberOf("--world-size world-size --nproc-per-node");
  return "  (rank " + rank + (size.empty() ? "" : " of " + size) + ")";
}

}  // namespace recognition
