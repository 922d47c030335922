#include "scanner/recognition/workload_name.h"

#include <algorithm>

#include "scanner/recognition/model_and_port.h"
#include "scanner/recognition/name_words.h"
#include "text/ascii.h"
#include "text/path.h"

namespace recognition {
namespace {

using ProcessScanner::FriendlyName;

std::string portSuffix(const Invocation& invocation, std::string_view options,
                       LabRole role = LabRole::none) {
  auto port = portOf(invocation, options);
  // Of a server of models "-p" is a port as well; others have prompts and projects.
  if (!port && role == LabRole::inference) {
    port = portOf(invocation, "-p");
    if (port && port->size() < 4) port.reset();
  }
  return port ? "  (:" + std::string(*port) + ")" : "";
}

/// How a training trains, as the naming rules rank it: the adapter before what is done with it.
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
    if (i == 1 && activity.verb == "run") words += ' ' + option;  // tune run RECIPE
  }
  const auto all = wordsOf(words);
  for (const Method& method : kMethods) {
    for (const std::string_view word : all) {
      if (isListed(method.words, word)) return method.name;
    }
  }
  return {};
}

std::string recipeName(std::string_view path) {
  std::string_view file = text::lastPathComponent(path);
  for (const std::string_view ending : {".yaml", ".yml", ".toml", ".json", ".cfg", ".py"}) {
    if (file.ends_with(ending)) file.remove_suffix(ending.size());
  }
  return ProcessScanner::basenameModel(file);
}

std::string trainingName(const Product& product, const Activity& activity,
                         const Invocation& invocation) {
  std::string name(activity.name.empty() ? product.name : activity.name);
  const std::string_view method = methodOf(activity, invocation);
  const bool saysAlready = std::any_of(name.begin(), name.end(), [](char c) { return c == ' '; });
  if (!method.empty() && !saysAlready) name += " " + std::string(method);
  // "finetune MODEL"; but "run RECIPE"
  const bool takesOperand = !activity.verb.empty() && activity.verb != "run";
  const std::string_view verb = takesOperand ? std::string_view(activity.verb) : "\n";
  if (const auto model = modelOf(invocation, product.modelOptions, verb)) {
    name += ": " + modelName(*model);
  } else if (const auto recipe = recipeOf(invocation)) {
    name += ": " + recipeName(*recipe);
  }
  return name;
}

/// A name that says only by what it was launched.
bool isLauncher(std::string_view name) {
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
    const std::string name(activity.name.empty() ? product.name : activity.name);
    return FriendlyName{name + port, group};
  }
  if (activity.role == LabRole::training) {
    return FriendlyName{trainingName(product, activity, invocation), group};
  }
  std::string name(activity.name.empty() ? product.name : activity.name);
  const auto model = modelOf(invocation, product.modelOptions, activity.verb);
  if (model) {
    name += ": " + modelName(*model);
  } else if (product.role == LabRole::training) {
    if (!activity.verb.empty() && activity.name.empty()) name += " " + activity.verb;
  } else if (const auto recipe = recipeOf(invocation); recipe && product.role != LabRole::agent) {
    name += ": " + recipeName(*recipe);
  } else if (port.empty() && invocation.isPython && !invocation.module.empty() &&
             invocation.script.empty() && activity.name.empty()) {
    // A module of which nothing more is known says more by its own name.
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

FriendlyName mcpServerName(const Invocation& invocation) {
  constexpr std::string_view kFiller =
      "mcp server servers modelcontextprotocol js py ts mjs cjs index main cli dist latest stdio "
      "run start";
  const auto told = [kFiller](std::string_view name) {
    std::string words;
    for (const std::string_view word : wordsOf(name)) {
      if (isListed(kFiller, word)) continue;
      if (!words.empty()) words += ' ';
      words += word;
    }
    return words;
  };
  const std::string_view scope =
      invocation.package.starts_with('@')
          ? std::string_view(invocation.package).substr(1, invocation.package.find('/') - 1)
          : std::string_view();
  for (const std::string_view name :
       {std::string_view(invocation.package).substr(invocation.package.find('/') + 1), scope,
        std::string_view(invocation.module), std::string_view(invocation.folder),
        std::string_view(invocation.script), std::string_view(invocation.program)}) {
    if (isListed("python node deno bun uvicorn gunicorn hypercorn granian", name)) continue;
    const std::string words = told(name);
    if (!words.empty()) {
      return {"MCP: " + ProcessScanner::basenameModel(words) + portSuffix(invocation, ""), "MCP"};
    }
  }
  return {"MCP server" + portSuffix(invocation, ""), "MCP"};
}

FriendlyName withModelAndPort(FriendlyName name, LabRole role, std::string_view modelOptions,
                              const Invocation& invocation) {
  const auto model = modelOf(invocation, modelOptions, "\n");
  if (role == LabRole::training) {
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
    } else if (runs && isLauncher(name.displayName)) {
      name.displayName = own;
    }
    return name;
  }
  for (const std::string_view unknown : {"LM Studio: LLM", "MLX Server: MLX model"}) {
    if (model && name.displayName.starts_with(unknown)) {
      name.displayName.replace(name.displayName.find(": ") + 2,
                               unknown.size() - unknown.find(": ") - 2, modelName(*model));
    }
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
      const bool isNumber = !value.empty() && value.size() <= 5 &&
                            std::all_of(value.begin(), value.end(), text::isDigit);
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
