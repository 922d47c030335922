#include "scanner/roles/role_by_activity.h"

#include <algorithm>

#include "scanner/command_line/model_options.h"
#include "scanner/command_line/option_values.h"
#include "scanner/command_line/program_names.h"
#include "scanner/roles/mcp_server.h"
#include "scanner/roles/self_made_server.h"

namespace recognition {
namespace {

// What the subcommands mean of a program that is known to work with models.
constexpr std::string_view kServing =
    "serve server serving api apiserver launch-server start up run runner chat cli generate app "
    "infer inference deploy webui web ui gradio demo worker service rollout predict stream "
    "interactive";
constexpr std::string_view kTrains =
    "train training trainer trains sft dpo grpo kto orpo ppo rlhf rl rloo cpo simpo reinforce "
    "lora qlora dora finetune finetuning finetuned tune pretrain pretraining pretrained cpt pt "
    "fit distill distillation reward rm";
constexpr std::string_view kNeither =
    "fuse preprocess convert converter conversion merge quantize quant export download pull push "
    "upload evaluate eval evaluation evaluator bench benchmark benchmarks list ls ps show cp copy "
    "create delete rm remove install uninstall login logout config configure env doctor status "
    "stop search info help version init new validate cache tokenize tokenizer prepare dataset "
    "check --version --help -h -v";

// The same for words in the name of a script, module or program that is in no table. Nothing else
// is known of it, so these are only words that are clear by themselves.
constexpr std::string_view kTrainsByName =
    "train training trainer sft dpo grpo kto orpo ppo rlhf qlora finetune finetuning pretrain "
    "pretraining";
constexpr std::string_view kNeitherByName =
    "preprocess convert merge quantize export download evaluate eval evaluation evaluator test "
    "tests bench benchmark tokenize tokenizer prepare dataset data plot visualize analyze analyse "
    "infer inference generate predict demo reduce nccl check summarize report collect";
/// A script whose name begins with one of these prepares data or models for others.
constexpr std::string_view kPrepares =
    "prepare preprocess preprocessing convert tokenize download split build make create extract "
    "clean filter merge quantize export generate collect inspect fetch upload";
/// A name with "train" in it that ends with one of these is no training: "train_tickets",
/// "train_dataset".
constexpr std::string_view kThings =
    "data dataset datasets set sets split splits list lists tokenizer schedule timetable station "
    "stations ticket tickets delay delays log logs stats results utils test service server portal "
    "app api";
/// What may stand behind that word in the name of a program that trains: "sft-cli", "train-gpu".
constexpr std::string_view kOfPrograms = "cli main gpu cuda cpu mpi";
constexpr std::string_view kServesByName =
    "serve server serving api apiserver chat generate app inference infer webui deploy";

/// Subcommands of "mcp" by which a client only changes its list of servers: "claude mcp add".
constexpr std::string_view kSetsUp =
    "add add-json add-from-claude-desktop get enable disable import reset-project-choices auth";

std::vector<std::string> strings(const std::vector<std::string_view>& views) {
  return {views.begin(), views.end()};
}

/// "fine-tune" and "pre-train" are one word each.
std::string withJoinedWords(std::string_view name) {
  std::string out = normalized(name);
  for (const std::string_view split : {"fine-tun", "pre-train"}) {
    for (auto at = out.find(split); at != std::string::npos; at = out.find(split)) {
      out.erase(out.find('-', at), 1);
    }
  }
  return out;
}

bool isAnyListed(std::string_view list, const std::vector<std::string>& words) {
  return std::ranges::any_of(words,
                             [list](const std::string& word) { return isListed(list, word); });
}

/// The role that a subcommand gives, whichever product it is of; none where it says nothing.
std::optional<LabRole> generalRole(std::string_view word, LabRole ofProduct) {
  const auto words = strings(wordsOf(withJoinedWords(word)));
  // For a framework that trains, "rm" is the reward model; elsewhere it removes something.
  const bool removes = word == "rm" && ofProduct != LabRole::training;
  if (!removes && isAnyListed(kTrains, words)) return LabRole::training;
  if (isListed(kNeither, word) || isAnyListed(kNeither, words)) return LabRole::none;
  if (isAnyListed(kServing, words)) {
    // An agent with a server is still an agent. "run" and the like start whatever the product is.
    if (ofProduct == LabRole::agent) return LabRole::agent;
    const bool saysNothing = isListed("run start up cli app web ui worker service runner", word);
    if (ofProduct == LabRole::training && saysNothing) return ofProduct;
    return LabRole::inference;
  }
  return std::nullopt;
}

bool beginsWithOneOf(std::string_view list, const std::vector<std::string>& words) {
  return !words.empty() && isListed(list, words.front());
}

bool endsWithOneOf(std::string_view list, const std::vector<std::string>& words) {
  return !words.empty() && isListed(list, words.back());
}

/// Whether the name of a program, which is no script, says that it trains. Its last word counts:
/// "lerobot-train" trains, "train-tickets" does not.
bool trainsAsProgram(std::vector<std::string> words, const Invocation& invocation) {
  for (const std::string_view ending : {".jar", ".dll", ".rb", ".pl", ".js"}) {
    if (invocation.path.ends_with(ending)) return false;
  }
  while (words.size() > 1 && endsWithOneOf(kOfPrograms, words)) words.pop_back();
  return words.size() > 1 && endsWithOneOf(kTrainsByName, words);
}

bool isBareWord(std::string_view word) {
  return !word.empty() && word.size() <= 64 && word.front() != '-' &&
         word.find_first_of("/=:@ {\"") == std::string_view::npos;
}

/// Whether it is given settings that only a training has: "train data=coco.yaml epochs=10".
bool hasSettingsOfTraining(const Invocation& invocation) {
  if (hasOption(invocation, "--epochs --learning-rate --lr --batch-size --train-data")) return true;
  const Arguments first =
      invocation.arguments.first(std::min<std::size_t>(invocation.arguments.size(), 64));
  return std::ranges::any_of(first, [](std::string_view word) {
    const auto equals = word.find('=');
    return equals != std::string_view::npos &&
           isListed("data epochs lr lr0 batch imgsz", word.substr(0, equals));
  });
}

/// Whether it is given a recipe with a training's name: "config/train_lora.yaml".
bool isGivenTraining(const Invocation& invocation) {
  const auto recipe = recipeOf(invocation);
  if (!recipe) return false;
  std::string_view file = recipe->substr(recipe->rfind('/') + 1);
  file = file.substr(0, file.rfind('.'));
  const auto words = strings(wordsOf(withJoinedWords(file)));
  return isAnyListed(kTrainsByName, words) && !isAnyListed(kNeitherByName, words) &&
         !endsWithOneOf(kThings, words);
}

/// Whether a program that nobody knows has options that only agents have: "--yolo", or a provider
/// beside the model.
bool hasAgentOptions(const Invocation& invocation) {
  // They let a program act without asking.
  constexpr std::string_view kUnasked =
      "--dangerously-skip-permissions --yolo --full-auto --allow-all-tools "
      "--dangerously-bypass-approvals-and-sandbox --dangerously-allow-all";
  if (hasOption(invocation, kUnasked)) return true;
  // Whoever is told the provider beside the model talks to a model that somebody else serves.
  return hasOption(invocation, "--provider") && hasOption(invocation, "--model");
}

}  // namespace

std::vector<std::string> subcommandsOf(const Invocation& invocation) {
  constexpr std::size_t kMost = 4;
  constexpr std::size_t kLookedAt = 12;
  std::vector<std::string> words;
  std::string_view before;
  const Arguments arguments = invocation.arguments;
  for (std::size_t i = 0; i < std::min(arguments.size(), kLookedAt); ++i) {
    const std::string_view word = arguments[i];
    const bool isValue = before.starts_with('-') && before.find('=') == std::string_view::npos;
    if (isBareWord(word) && !isValue) {
      words.push_back(normalized(word));
      if (words.size() == kMost) break;
    }
    before = word;
  }
  return words;
}

bool namesTraining(std::string_view name) {
  return isAnyListed(kTrainsByName, strings(wordsOf(withJoinedWords(name))));
}

Activity activityOf(const KnownProduct& known, const Invocation& invocation) {
  const Product& product = *known.product;
  std::vector<std::string> words;
  for (std::string_view tail = known.tail; !tail.empty();) {
    const auto dot = tail.find('.');
    words.emplace_back(tail.substr(0, dot));
    tail = dot == std::string_view::npos ? std::string_view() : tail.substr(dot + 1);
  }
  for (std::string& word : subcommandsOf(invocation)) words.push_back(std::move(word));

  const auto ownVerb = [&product](std::string_view word) -> const Verb* {
    for (const Verb& verb : product.verbs) {
      if (!verb.word.empty() && verb.word == word) return &verb;
    }
    return nullptr;
  };
  const bool setsUp = words.size() > 1 && words[0] == "mcp" &&
                      (isListed(kSetsUp, words[1]) || isListed(kNeither, words[1]));
  if (setsUp) return {LabRole::none, "mcp " + words[1], {}};
  for (const std::string& word : words) {
    if (const Verb* const verb = ownVerb(word)) return {verb->role, word, verb->name};
  }
  const Arguments first =
      invocation.arguments.first(std::min<std::size_t>(invocation.arguments.size(), 64));
  // Only as the last word is "-h" a question for help; before a value it names a host.
  if (!first.empty() && first.back() == "-h") return {LabRole::none, "-h", {}};
  for (const std::string_view argument : first) {
    const std::string word = normalized(argument);
    if (isListed("--version --help", word)) return {LabRole::none, word, {}};
    if (word.find('=') == std::string::npos) continue;
    if (const Verb* const verb = ownVerb(word)) return {verb->role, word, verb->name};
  }
  for (const std::string& word : words) {
    if (product.isOnlyByVerbs && product.verbs.front().word.empty() == false) continue;
    if (const auto role = generalRole(word, product.role)) return {*role, word, {}};
    if (word == "mcp") return {LabRole::agent, word, {}};
  }
  if (product.isOnlyByVerbs) return {};
  return {product.role, {}, {}};
}

Activity activityOf(const Invocation& invocation) {
  const auto subcommands = subcommandsOf(invocation);
  if (isMcpServer(invocation, subcommands)) return {LabRole::agent, "mcp", {}};
  if (invocation.isTitle || invocation.isCode) return {};

  // The name that says what it does: the script's, else the last part of the module's, else the
  // program's.
  std::string_view script = invocation.script;
  if (script.ends_with(".py")) script.remove_suffix(3);
  std::string name = withJoinedWords(script);
  if (name.empty() || !invocation.module.empty()) {
    std::string_view module = invocation.module;
    const auto partOf = [&module] { return module.substr(module.rfind('.') + 1); };
    // "training_pipeline.run" says what it does before the last part.
    if (isListed("run main cli start", partOf()) && module.find('.') != std::string_view::npos) {
      module = module.substr(0, module.rfind('.'));
    }
    name = withJoinedWords(partOf());
  }
  if (name.empty()) {
    // Of a title such as "name - description" the name: normalized, " - " is "---".
    const std::string_view program = invocation.program;
    name = withJoinedWords(program.substr(0, program.find("---")));
  }
  const auto words = strings(wordsOf(name));
  const bool runsScript = !invocation.script.empty() || !invocation.module.empty();
  // "lora" is a kind of radio as well: it counts only beside a model.
  const bool trains =
      isAnyListed(kTrainsByName, words) || (isAnyListed("lora", words) && namesModel(invocation));
  const bool neither = isAnyListed(kNeitherByName, words);
  const bool listens = hasOption(invocation,
                                 "--port --host --hostname --listen --uds-path "
                                 "--http-port --grpc-port --num-shard");
  // Only those who start one process for each device pass "--local-rank".
  const bool isDistributed =
      invocation.isDistributed || (invocation.isPython && hasOption(invocation, "--local-rank"));

  if (invocation.isPython && runsScript && !invocation.isServedByHost) {
    if (!invocation.arguments.empty() && invocation.arguments.back() == "--help") {
      return {LabRole::none, "--help", {}};
    }
    const bool onlyEvaluates =
        hasOption(invocation, "--eval-only --evaluate --test-only --only-eval --inference-only") ||
        (hasOption(invocation, "--do-eval --do-predict") && !hasOption(invocation, "--do-train"));
    if (onlyEvaluates) return {LabRole::none, "eval", {}};
    // A script that generates on several devices holds a model in them.
    const bool answers = beginsWithOneOf("generate infer inference chat predict sample", words);
    if (answers && isDistributed && namesModel(invocation)) return {LabRole::inference, name, {}};
    if (!listens &&
        (beginsWithOneOf(kPrepares, words) || (trains && endsWithOneOf(kThings, words)))) {
      return {LabRole::none, name, {}};
    }
    if (trains && (!neither || !isListed(kNeitherByName, words.front()) ||
                   (isDistributed && words.front() == "test"))) {
      return {LabRole::training, name, {}};
    }
    if (neither && (trains || isDistributed)) return {LabRole::none, name, {}};
    // Options that only a training has.
    const bool hasSchedule =
        hasOption(invocation,
                  "--max-train-steps --num-train-epochs --train-batch-size --train-data-dir "
                  "--per-device-train-batch-size --instance-data-dir") ||
        (hasOption(invocation, "--epochs --num-epochs --max-epochs --n-epochs") &&
         hasOption(invocation, "--lr --learning-rate --batch-size --bs --optimizer"));
    if (hasSchedule && !neither) return {LabRole::training, {}, {}};
    // A script with a general name does what its recipe says: "run.py config/train_lora.yaml".
    if (isListed("run main cli start launch", name) && isGivenTraining(invocation)) {
      return {LabRole::training, {}, {}};
    }
    if (answers && hasOption(invocation,
                             "--infer-steps --num-inference-steps --sampling-steps "
                             "--sample-steps --guidance-scale --cfg-scale --frame-num")) {
      return {LabRole::inference, name, {}};
    }
    if (!subcommands.empty() &&
        (namesTraining(subcommands.front()) || subcommands.front() == "fit") &&
        subcommands.front().find('.') == std::string::npos) {
      return {LabRole::training, subcommands.front(), {}};
    }
  } else if (!invocation.isServedByHost) {
    // A program that is named after training ("lerobot-train", "train_gpt2cu").
    if (trains && !neither && trainsAsProgram(words, invocation)) {
      return {LabRole::training, name, {}};
    }
    static constexpr std::string_view kMethods =
        "sft dpo grpo kto orpo ppo rlhf finetune finetuning pretrain qlora";
    const bool hasMethod =
        !subcommands.empty() &&
        std::any_of(subcommands.begin(),
                    subcommands.begin() + std::min<long>(2, static_cast<long>(subcommands.size())),
                    [](const std::string& word) {
                      return word.find('.') == std::string::npos &&
                             isAnyListed(kMethods, strings(wordsOf(withJoinedWords(word))));
                    });
    if (hasMethod) return {LabRole::training, subcommands.front(), {}};
    if (!subcommands.empty() && subcommands.front() == "train" &&
        hasSettingsOfTraining(invocation)) {
      return {LabRole::training, "train", {}};
    }
  }
  if (hasAgentOptions(invocation)) return {LabRole::agent, {}, {}};

  // A subcommand that serves counts only beside a model.
  const bool verbServes = !subcommands.empty() &&
                          isListed("serve server api chat infer inference deploy run generate app",
                                   subcommands.front());
  const bool serves = isAnyListed(kServesByName, words) || verbServes;
  const auto takesModel = [&invocation, verbServes] {
    if (namesModel(invocation)) return true;
    const Arguments first =
        invocation.arguments.first(std::min<std::size_t>(invocation.arguments.size(), 3));
    return verbServes && std::ranges::any_of(first, looksLikeModel);
  };
  if (serves && takesModel()) return {LabRole::inference, "serve", {}};
  // So does a port. A program, which is no script, serves as well when it is given weights.
  if (!trains && !neither) {
    if (listens && takesModel()) return {LabRole::inference, "serve", {}};
    if (!invocation.isPython && givesWeights(invocation)) return {LabRole::inference, {}, {}};
    // Launchers, routers and workers often pass on the mere name of a model that another process
    // serves: theirs must be one to load.
    if (isAnyListed("launcher router worker", words) && holdsModel(invocation)) {
      return {LabRole::inference, "serve", {}};
    }
  }
  if (!trains && !neither && !selfMadeServer(invocation).empty()) {
    return {LabRole::inference, "serve", {}};
  }
  // A script that is started once for each device trains, where nothing says otherwise.
  if (isDistributed && runsScript) return {LabRole::training, {}, {}};
  return {};
}

std::optional<LabRole> roleOfSubcommand(const Invocation& invocation, LabRole byWords) {
  if (!invocation.script.empty() && invocation.module.empty() && invocation.package.empty()) {
    return std::nullopt;
  }
  const auto subcommands = subcommandsOf(invocation);
  if (subcommands.empty()) return std::nullopt;
  const std::string& verb = subcommands.front();
  if (isListed(kNeither, verb) || isListed("webui studio", verb)) return LabRole::none;
  if (byWords == LabRole::training &&
      isListed("serve server api chat infer inference deploy generate", verb)) {
    return LabRole::inference;
  }
  return std::nullopt;
}

}  // namespace recognition
