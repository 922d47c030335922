#include <gtest/gtest.h>

#include <array>
#include <cctype>
#include <random>
#include <set>

#include "reference/process_rules.h"
#include "reference/text_rules.h"
#include "scanner/process_scanner.h"
#include "scanner/roles/marker_search.h"

namespace {

using reference::Strings;

/// Texts from which a rule may turn that are no markers: option names, commands, paths, model
/// names, secrets, and texts that lower or break in unusual ways.
const Strings& otherTexts() {
  static const Strings texts{"--model",
                             "-m",
                             "--base-model",
                             "--base_model",
                             "--model-name",
                             "--model_name",
                             "--served-model-name",
                             "--model=",
                             "--port=",
                             "--port",
                             "--train",
                             "generate",
                             "serve",
                             "run",
                             "train",
                             "finetune",
                             "fine-tune",
                             "-W",
                             "-X",
                             "-u",
                             "-c",
                             "-",
                             "--",
                             "python",
                             "python3",
                             "/usr/bin/python3.11",
                             "Python",
                             "node",
                             "nodejs",
                             "bash",
                             "/bin/sh",
                             "tee",
                             "ollama",
                             "llama-server",
                             "hermes",
                             "brevik",
                             "torch-run",
                             "accelerate",
                             "deepspeed",
                             "axolotl",
                             "com.docker.vmnetd",
                             "containermanagerd",
                             "/A/Foo.app/x",
                             "/A/.app/x",
                             "/Docker.app/",
                             "/B/Foo Bar.app.app/y",
                             "app.py",
                             "x/train_8b.py",
                             "train-x.py",
                             "my_train.py",
                             "a.PY",
                             "lora",
                             "x-lora.gguf",
                             "y-lora.safetensors",
                             "adapter",
                             "zentho",
                             "models/llama3",
                             "Qwen/x",
                             "x/mistral",
                             "x/phi",
                             "x/gemma",
                             "huggingface",
                             "mlx-community",
                             "a_b-c.Q4_K_M.GGUF",
                             "x.mlx.pth.pt.bin",
                             ".gguf",
                             "/",
                             "//",
                             "",
                             " ",
                             "  ",
                             "\t",
                             "=",
                             "8080",
                             "x",
                             "é",
                             "İ",
                             "\u212A",
                             "e\u0301",
                             "👩‍👩‍👧",
                             "\xFF",
                             "\xE2\x80",
                             "\u3000",
                             "a-very-long-name-of-a-model_that",
                             "--token",
                             "--API_KEY",
                             "--apikey",
                             "--secret",
                             "--key",
                             "--auth",
                             "\u00A0"};
  return texts;
}

class CommandGenerator {
 public:
  explicit CommandGenerator(std::uint32_t seed) : random_(seed) {}

  bool chance(int percent) { return below(100) < percent; }
  int below(int limit) { return static_cast<int>(random_() % static_cast<std::uint32_t>(limit)); }

  std::size_t place(const std::string& text) {
    return static_cast<std::size_t>(below(static_cast<int>(text.size())));
  }

  /// One of the texts that rules look for, whole or nearly so, in any case.
  std::string piece() {
    const auto index = static_cast<std::size_t>(
        below(static_cast<int>(kMarkers.size() + 2 * otherTexts().size())));
    std::string text = index < kMarkers.size() ? std::string(kMarkers[index])
                                               : otherTexts()[(index - kMarkers.size()) / 2];
    if (text.size() > 1) {
      if (chance(4)) text[place(text)] = '_';
      if (chance(8)) text.erase(place(text), 1);
    }
    if (chance(12)) {
      for (char& c : text) {
        if (chance(40)) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
      }
    }
    return text;
  }

  std::string argument() {
    std::string text = piece();
    while (chance(35)) {
      if (chance(20)) text += std::string(1, "/ =.-_:\t\0"[below(9)]);
      text += piece();
    }
    if (chance(1)) text += std::string(static_cast<std::size_t>(below(3000)), 'y');
    return text;
  }

  Strings arguments() {
    Strings result;
    const int most = chance(5) ? 60 : 9;
    for (int count = below(most); count > 0; --count) result.push_back(argument());
    // Most rules ask for Python, whichever else they ask for.
    if (!result.empty() && chance(40)) result[0] = chance(50) ? "python3" : "/usr/bin/python";
    return result;
  }

 private:
  std::mt19937 random_;
};

std::string described(const Strings& arguments) {
  std::string text;
  for (const auto& argument : arguments) text += "[" + argument + "]";
  return text;
}

constexpr int kRounds = 40000;

TEST(Rules, ClassifyAsTheReferenceDoes) {
  CommandGenerator generator(20260101);
  std::array<int, 4> seen{};
  for (int round = 0; round < kRounds; ++round) {
    const Strings arguments = generator.arguments();
    // Mostly as a process has them, sometimes each for itself.
    const std::string line = generator.chance(80) ? reference::joined(arguments)
                                                  : reference::joined(generator.arguments());
    const std::string name =
        generator.chance(70) && !arguments.empty() ? arguments[0] : generator.argument();
    const LabRole expected = reference::classifyLabRole(name, arguments, line);
    ++seen[static_cast<std::size_t>(expected)];
    ASSERT_EQ(rawValue(ProcessScanner::classifyLabRole(name, arguments, line)), rawValue(expected))
        << name << " | " << line << " | " << described(arguments);
  }
  for (const int count : seen) EXPECT_GT(count, kRounds / 50);
}

TEST(Rules, DetectTrainingAsTheReferenceDoes) {
  CommandGenerator generator(20260102);
  std::array<int, 2> seen{};
  for (int round = 0; round < kRounds; ++round) {
    Strings arguments = generator.arguments();
    std::string line = reference::joined(generator.chance(80) ? arguments : generator.arguments());
    if (generator.chance(80)) {
      arguments = reference::lower(arguments);
      line = reference::lower(line);
    }
    const std::string exe = generator.chance(50) ? "python" : generator.argument();
    const bool isServing = generator.chance(50);
    const bool expected = reference::isTrainingProcess(exe, line, arguments, isServing);
    ++seen[expected ? 1 : 0];
    ASSERT_EQ(ProcessScanner::isTrainingProcess(exe, line, arguments, isServing), expected)
        << exe << " | " << line << " | " << described(arguments) << " | " << isServing;
  }
  for (const int count : seen) EXPECT_GT(count, kRounds / 10);
}

TEST(Rules, NameAsTheReferenceDoes) {
  CommandGenerator generator(20260103);
  std::set<std::string> products;
  for (int round = 0; round < kRounds; ++round) {
    const Strings arguments = generator.arguments();
    const std::string fallback = generator.argument();
    const auto expected = reference::friendlyName(arguments, fallback);
    const auto name = ProcessScanner::friendlyName(arguments, fallback);
    products.insert(expected.second);
    ASSERT_EQ(name.displayName, expected.first) << described(arguments);
    ASSERT_EQ(name.product, expected.second) << described(arguments);
  }
  EXPECT_EQ(products.size(), 13U);
}

TEST(Rules, FindOptionsAsTheReferenceDoes) {
  CommandGenerator generator(20260104);
  for (int round = 0; round < kRounds; ++round) {
    const Strings arguments = generator.arguments();
    Strings names;
    for (int count = generator.below(4); count > 0; --count) names.push_back(generator.piece());
    if (generator.chance(50)) names = {"--model", "-m", "--served-model-name"};
    const std::vector<std::string_view> views(names.begin(), names.end());
    ASSERT_EQ(ProcessScanner::flag(arguments, views), reference::flag(arguments, names))
        << described(arguments) << " | " << described(names);
  }
}

TEST(Rules, ShortenModelNamesAsTheReferenceDoes) {
  CommandGenerator generator(20260105);
  const Strings suffixes{".gguf", ".SafeTensors", ".bin", ".pt", ".pth", ".mlx", "", "/"};
  for (int round = 0; round < kRounds; ++round) {
    std::string model = generator.argument();
    while (generator.chance(60)) model += suffixes[static_cast<std::size_t>(generator.below(8))];
    ASSERT_EQ(ProcessScanner::basenameModel(model), reference::basenameModel(model)) << model;
  }
}

TEST(Rules, RedactAsTheReferenceDoes) {
  CommandGenerator generator(20260106);
  const Strings parts{"--",   "api", "-",  "_",      "key",     "token",    "PassWord", "secret",
                      "auth", " ",   "\t", "\u00A0", "\u3000",  "\u212A",   "\u017F",   "x",
                      "e",    "y",   "é",  "\u200B", " --key ", " --Token", "  "};
  int redacted = 0;
  for (int round = 0; round < kRounds; ++round) {
    std::string line;
    for (int count = generator.below(25); count > 0; --count) {
      line += parts[static_cast<std::size_t>(generator.below(static_cast<int>(parts.size())))];
    }
    const std::string expected = reference::redactSecrets(line);
    if (expected != line) ++redacted;
    ASSERT_EQ(ProcessScanner::redactSecrets(line), expected) << line;
  }
  EXPECT_GT(redacted, kRounds / 10);
}

}  // namespace
