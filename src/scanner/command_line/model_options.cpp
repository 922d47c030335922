#include "scanner/command_line/model_options.h"

#include <algorithm>

#include "scanner/command_line/option_values.h"
#include "scanner/command_line/program_names.h"
#include "scanner/command_line/server_port.h"
#include "text/ascii.h"
#include "text/path.h"
#include "text/unicode.h"

namespace ProcessScanner {
namespace {

/// For `python [options] -m MODULE ...` the arguments behind the module; for any other command all
/// arguments.
std::span<const std::string_view> programArguments(std::span<const std::string_view> arguments) {
  if (arguments.empty()) return arguments;
  const std::string exe = text::lowered(text::lastPathComponent(arguments[0]));
  if (!exe.starts_with("python")) return arguments;

  for (std::size_t i = 1; i < arguments.size() && arguments[i].starts_with('-'); ++i) {
    if (arguments[i] == "-m") return arguments.subspan(std::min(i + 2, arguments.size()));
    if (arguments[i] == "-W" || arguments[i] == "-X") ++i;  // these take the next argument
  }
  return arguments;
}

}  // namespace

std::optional<std::string_view> modelOption(std::span<const std::string_view> arguments,
                                            std::span<const std::string_view> names) {
  return optionValue(programArguments(arguments), names);
}

}  // namespace ProcessScanner

namespace recognition {
namespace {

/// The name that a server gives its model goes before the path that it is read from.
constexpr std::string_view kServedNames = "--served-model-name --alias";
constexpr std::string_view kModelOptions =
    "--model --model-path --model-id --model-name --model-name-or-path --hf-repo -hf "
    "--pretrained-model-name-or-path --pretrained-model-name --pretrained-model --base-model "
    "--base-model-name --base-model-path "
    "--model-dir --checkpoint --ckpt --checkpoint-path --checkpoint-dir --ckpt-path --ckpt-dir "
    "--llama-checkpoint-path --model-repo --model-uri --model-file --gguf --gguf-file "
    "--hf-model-path "
    "--teacher-model-name-or-path";

/// An option or a key with dots: the last part tells ("--actor.model_name_or_path").
constexpr std::string_view kModelKeys =
    "model model-path model-id model-name model-name-or-path pretrained-model-name-or-path "
    "base-model model-dir pretrained";

/// "--actor.model_name_or_path X", "model=X", "actor_rollout_ref.model.path=X".
std::optional<std::string_view> keyedModel(Arguments arguments) {
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    std::string_view word = arguments[i];
    const bool isOption = word.starts_with("--");
    const auto equals = word.find('=');
    if (!isOption && equals == std::string_view::npos) continue;
    if (isOption) word.remove_prefix(2);
    while (word.starts_with('+')) word.remove_prefix(1);
    std::string key = normalized(word.substr(0, word.find('=')));
    if (isOption && key.find('.') == std::string::npos) continue;
    if (key.ends_with(".path")) key.resize(key.size() - 5);
    const std::string_view last = std::string_view(key).substr(key.rfind('.') + 1);
    if (!isListed(kModelKeys, last)) continue;
    if (word.find('=') != std::string_view::npos) return word.substr(word.find('=') + 1);
    if (i + 1 < arguments.size() && !arguments[i + 1].starts_with('-')) return arguments[i + 1];
  }
  return std::nullopt;
}

bool isRecipe(std::string_view word) {
  return word.ends_with(".yaml") || word.ends_with(".yml") || word.ends_with(".toml") ||
         word.ends_with(".cfg");
}

/// "qwen3:0.6b", "gemma3:latest"; no address: a port has neither letter.
bool isTagged(std::string_view word) {
  const auto colon = word.find(':');
  return colon != std::string_view::npos && colon > 1 && text::isLetter(word.front()) &&
         word.find_first_of("/\\=,{\"' ") == std::string_view::npos &&
         word.find(':', colon + 1) == std::string_view::npos &&
         std::any_of(word.begin() + static_cast<long>(colon), word.end(), text::isLetter);
}

bool isSourceOrSettings(std::string_view word) {
  return word.ends_with(".py") || word.ends_with(".js") || word.ends_with(".json") ||
         word.ends_with(".sock") || word.ends_with(".txt") || word.ends_with(".log");
}

bool isWeights(std::string_view word) {
  return word.ends_with(".gguf") || word.ends_with(".safetensors");
}

/// A word for how it is trained, where others take their model.
bool isMethod(std::string_view word) {
  return isListed("lora qlora full adapter adapter_v2 sft dpo grpo kto orpo ppo", word);
}

/// What stands right behind the verb, or, of a program without one, right behind its name.
std::optional<std::string_view> operand(Arguments arguments, std::string_view verb) {
  std::size_t at = 0;
  if (!verb.empty()) {
    while (at < arguments.size() && normalized(arguments[at]) != verb) ++at;
    if (at == arguments.size()) return std::nullopt;
    ++at;
  }
  // "serve api_server MODEL", "serve -p 8080 MODEL"
  while (at + 1 < arguments.size() && isPortOption(arguments[at])) at += 2;
  while (at < arguments.size() && isListed("api_server serve server", arguments[at])) ++at;
  // "finetune lora MODEL"
  while (at < arguments.size() && isMethod(arguments[at])) ++at;
  if (at >= arguments.size()) return std::nullopt;
  const std::string_view word = arguments[at];
  if (word.empty() || word.front() == '-' || word.find('=') != std::string_view::npos) {
    return std::nullopt;
  }
  if (verb.empty() && word.find('/') == std::string_view::npos && !isWeights(word)) {
    return std::nullopt;
  }
  return word;
}

/// Whether the value of this option is no model that is served, although it may look like one.
bool takesSomethingElse(std::string_view option) {
  static constexpr std::string_view kElse =
      "tokenizer draft speculative dataset data lora adapter adapters template config dir cache "
      "revision output image mmproj vae clip reward teacher file path host url key log";
  const auto words = wordsOf(option);
  return std::ranges::any_of(words, [](std::string_view word) { return isListed(kElse, word); });
}

/// "serve --host 127.0.0.1 qwen3:0.6b", "serve --tp 1 /models/llama", "serve --omni a/B": behind
/// options, only what looks like a model is one.
std::optional<std::string_view> operandBehindOptions(Arguments arguments, std::string_view verb) {
  if (verb.empty()) return std::nullopt;
  std::size_t at = 0;
  while (at < arguments.size() && normalized(arguments[at]) != verb) ++at;
  std::optional<std::string_view> behindFlag;
  std::string_view before;
  for (++at; at < arguments.size(); ++at) {
    const std::string_view word = arguments[at];
    const bool isValue = before.starts_with('-') && before.find('=') == std::string_view::npos;
    const bool isPath = (word.starts_with('/') || word.starts_with("./")) && !isRecipe(word) &&
                        !isSourceOrSettings(word);
    if (!isValue && (looksLikeModel(word) || isTagged(word) || isPath)) return word;
    // Which options take a value is not known: behind one that is a mere flag this is the operand.
    if (isValue && !behindFlag && looksLikeModel(word) && !takesSomethingElse(normalized(before))) {
      behindFlag = word;
    }
    before = word;
  }
  return behindFlag;
}

}  // namespace

std::optional<std::string_view> modelOf(const Invocation& invocation, std::string_view options,
                                        std::string_view verb) {
  const Arguments arguments = lookedAt(invocation);
  if (const auto name = valueOf(arguments, kServedNames)) return name;
  if (!options.empty()) {
    // In the order in which the row gives them: some programs take several models.
    for (const std::string_view option : listed(options)) {
      if (const auto model = valueOf(arguments, option)) return model;
    }
  }
  if (const auto word = operand(arguments, verb);
      word && !isRecipe(*word) && !word->ends_with(".py")) {
    return word;
  }
  if (const auto model = valueOf(arguments, kModelOptions)) return model;
  if (const auto model = valueOf(arguments, "-m")) return model;
  if (const auto model = keyedModel(arguments)) return model;
  return operandBehindOptions(arguments, verb);
}

std::optional<std::string_view> recipeOf(const Invocation& invocation) {
  // "config.yaml" says little. As an operand it may be all that tells one run from another; as the
  // value of an option it does not count.
  const auto tellsName = [&invocation](std::string_view path, bool isOperand) {
    const std::string_view file = text::lastPathComponent(path);
    const std::string stem = normalized(file.substr(0, file.rfind('.')));
    if (stem == "config") return isOperand;
    return !isListed("default settings accelerate-config ds-config deepspeed", stem) &&
           !stem.empty() && stem != invocation.program;
  };
  constexpr std::string_view kOptions =
      "--config --config-name --config-file --recipe --job.config-file --cfg -c";
  if (const auto value = valueOf(lookedAt(invocation), kOptions);
      value && tellsName(*value, false)) {
    return value;
  }
  std::string_view before;
  // A program that is no script itself may take a recipe that is written in Python.
  const auto isPython = [&invocation](std::string_view word) {
    return invocation.script.empty() && word.ends_with(".py");
  };
  for (const std::string_view word : lookedAt(invocation)) {
    const bool isValue = before.starts_with('-') && before.find('=') == std::string_view::npos;
    if (!isValue && (isRecipe(word) || isPython(word)) && !word.starts_with('-') &&
        word.find('=') == std::string_view::npos && tellsName(word, true)) {
      return word;
    }
    before = word;
  }
  return std::nullopt;
}

bool namesModel(const Invocation& invocation) {
  const Arguments arguments = lookedAt(invocation);
  if (valueOf(arguments, kModelOptions) || valueOf(arguments, kServedNames)) return true;
  const auto given = valueOf(arguments, "-m");
  return given && (isWeights(*given) || given->find('/') != std::string_view::npos);
}

bool givesWeights(const Invocation& invocation) {
  const auto given = valueOf(lookedAt(invocation), "-m --model --model-file");
  return given && isWeights(*given);
}

bool holdsModel(const Invocation& invocation) {
  const auto given = valueOf(lookedAt(invocation), kModelOptions);
  return given && (given->find('/') != std::string_view::npos || isWeights(*given));
}

bool looksLikeModel(std::string_view word) {
  if (word.starts_with("HF://") || word.starts_with("hf://") || isWeights(word)) return true;
  if (word.empty() || word.find_first_of(" =\\\"'") != std::string_view::npos) return false;
  // "organization/name", no path
  const auto slash = word.find('/');
  if (slash != std::string_view::npos) {
    return slash > 0 && slash == word.rfind('/') && slash + 1 < word.size() &&
           word.front() != '.' && word.front() != '~' && word.find(':') == std::string_view::npos &&
           word.find('.', slash) == word.rfind('.') && !isRecipe(word) && !word.ends_with(".py") &&
           !word.ends_with(".js");
  }
  // "name:tag", no address
  const auto colon = word.find(':');
  return colon != std::string_view::npos && colon > 2 && colon + 1 < word.size() &&
         text::isLetter(word.front()) &&
         word.find_first_not_of("0123456789", colon + 1) != std::string_view::npos &&
         word.find('.') != std::string_view::npos && text::isDigit(word[colon + 1]);
}

}  // namespace recognition
