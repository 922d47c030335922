#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <ostream>
#include <string_view>

#include "fakes/row_name.h"
#include "reference/process_rules.h"
#include "scanner/command_words.h"
#include "scanner/process_scanner.h"
#include "scanner/roles/role_word_table.h"

namespace {

using ProcessScanner::classifyLabRole;
using ProcessScanner::isTrainingProcess;
using reference::Strings;

struct CommandRow {
  const char* name;
  const char* command;
  LabRole role;
};

std::ostream& operator<<(std::ostream& out, const CommandRow& row) {
  return out << row.command;
}

class CommandRole : public testing::TestWithParam<CommandRow> {};

TEST_P(CommandRole, IsTheFirstThatARuleGives) {
  const auto arguments = words(GetParam().command);
  const LabRole role = classifyLabRole(arguments.front(), arguments, GetParam().command);
  EXPECT_EQ(rawValue(role), rawValue(GetParam().role));
}

INSTANTIATE_TEST_SUITE_P(
    Wrappers, CommandRole,
    testing::Values(CommandRow{"BashRunsTraining", "bash -c python train.py", LabRole::none},
                    CommandRow{"WrapperByPath", "/usr/bin/nohup vllm serve", LabRole::none},
                    CommandRow{"WrapperInCapitals", "/bin/ZSH -c ollama serve", LabRole::none},
                    CommandRow{"Tee", "tee train.py", LabRole::none},
                    CommandRow{"Caffeinate", "caffeinate ollama serve", LabRole::none},
                    CommandRow{"Sh", "sh -c vllm", LabRole::none},
                    CommandRow{"Fish", "fish -c vllm", LabRole::none},
                    CommandRow{"Nice", "nice vllm", LabRole::none},
                    CommandRow{"Timeout", "timeout 9 vllm", LabRole::none},
                    CommandRow{"Script", "script -c vllm", LabRole::none},
                    CommandRow{"DashIsNoWrapper", "dash -c vllm", LabRole::inference}),
    rowName<CommandRow>);

INSTANTIATE_TEST_SUITE_P(
    Training, CommandRole,
    testing::Values(
        CommandRow{"TrainPyWithPort", "python train.py --port 8000", LabRole::training},
        CommandRow{"MlxLora", "python -m mlx_lm.lora --train", LabRole::training},
        CommandRow{"BeforeInference", "python train.py --eval-with vllm", LabRole::training},
        CommandRow{"MentionsAServer", "python finetune.py --server http://x", LabRole::training},
        CommandRow{"ScriptNamedAfterTraining",
                   "python train_lora.py --model_name_or_path meta-llama/Llama-2-7b",
                   LabRole::training},
        CommandRow{"ScriptNamedWithDash", "python /x/Train-8B.PY", LabRole::training},
        CommandRow{"ScriptThatOnlyEndsInTrain", "python my_train_8b.py", LabRole::none},
        CommandRow{"TrainUnderscoreFolder", "python train_x/run.py", LabRole::none},
        CommandRow{"TrainScriptThatIsNoPython", "python train_lora.sh", LabRole::none},
        CommandRow{"NoInterpreter", "make train.py", LabRole::none},
        CommandRow{"ServerWithLoraAdapter", "python -m mlx_lm.server --adapter-path lora",
                   LabRole::inference},
        CommandRow{"ServerWithPeft", "python serve.py --peft", LabRole::training},
        CommandRow{"AdapterServer", "python server.py --adapter lora_weights", LabRole::none},
        CommandRow{"GeneratesWithLora", "python -m mlx_lm generate --adapter lora",
                   LabRole::inference},
        CommandRow{"LoraWithoutServing", "python -m mlx_lm fuse --adapter lora", LabRole::training},
        CommandRow{"LoraWeightsAlone", "python -m mlx_lm fuse x-lora.safetensors", LabRole::none},
        CommandRow{"LoraWeightsInGguf", "python -m mlx_lm fuse x-lora.GGUF", LabRole::none}),
    rowName<CommandRow>);

INSTANTIATE_TEST_SUITE_P(
    Inference, CommandRole,
    testing::Values(
        CommandRow{"LlamaServer", "llama-server -m model.gguf", LabRole::inference},
        CommandRow{"LlamaServerInTheLine", "/opt/x --run llama-server", LabRole::inference},
        CommandRow{"LlamaCppServer", "/src/llama.cpp/build/server", LabRole::inference},
        CommandRow{"LlamaCppAlone", "/src/llama.cpp/main", LabRole::none},
        CommandRow{"RapidMlx", "rapid-mlx", LabRole::inference},
        CommandRow{"MlxGenerate", "python -m mlx_lm generate --model m", LabRole::inference},
        CommandRow{"MlxServe", "mlx_lm serve", LabRole::inference},
        CommandRow{"MlxAlone", "mlx_lm chat", LabRole::none},
        CommandRow{"MlxGenerateAsPartOfAWord", "mlx_lm generated", LabRole::none},
        CommandRow{"OllamaRunner", "/usr/local/bin/ollama runner --model x", LabRole::inference},
        CommandRow{"OllamaServeByAnother", "env ollama serve", LabRole::inference},
        CommandRow{"OllamaFolderServes", "/opt/ollama-1/bin/x serve", LabRole::inference},
        CommandRow{"OllamaFolder", "/opt/ollama-1/bin/x list", LabRole::none},
        CommandRow{"LmStudio", "/opt/LMStudio/x", LabRole::inference},
        CommandRow{"LmStudioDotFolder", "/home/a/.lmstudio/bin/x", LabRole::inference},
        CommandRow{"LmsServer", "lms server start", LabRole::inference},
        CommandRow{"Vllm", "vllm x", LabRole::inference},
        CommandRow{"Tgi", "text-generation-inference", LabRole::inference},
        CommandRow{"TgiAsAWord", "tgi --x", LabRole::inference},
        CommandRow{"TgiAtTheEnd", "run tgi", LabRole::none},
        CommandRow{"LocalAi", "LocalAI", LabRole::inference},
        CommandRow{"Jan", "/opt/jan.ai/x", LabRole::inference},
        CommandRow{"Oobabooga", "oobabooga", LabRole::inference},
        CommandRow{"Textgen", "textgen", LabRole::inference},
        CommandRow{"TabbyApi", "tabbyapi", LabRole::inference},
        CommandRow{"Kobold", "koboldcpp", LabRole::inference},
        CommandRow{"GgufWithPort", "x a.gguf --port 1", LabRole::inference},
        CommandRow{"SafetensorsWithHost", "x a.safetensors --host h", LabRole::inference},
        CommandRow{"CommunityModelServed", "x mlx-community/m serve", LabRole::inference},
        CommandRow{"CommunityModelOnAHost", "x a.gguf localhost", LabRole::inference},
        CommandRow{"GgufAlone", "less a.gguf", LabRole::none}),
    rowName<CommandRow>);

INSTANTIATE_TEST_SUITE_P(
    Agents, CommandRole,
    testing::Values(CommandRow{"McpServer", "node mcp-server.js", LabRole::agent},
                    CommandRow{"McpModule", "x -m zentho.mcp", LabRole::agent},
                    CommandRow{"McpOverStdio", "mcp-thing --stdio", LabRole::agent},
                    CommandRow{"McpAlone", "mcp-thing", LabRole::none},
                    CommandRow{"McpModuleAtTheEnd", "mcp -m", LabRole::none},
                    CommandRow{"LangChain", "x langchain", LabRole::agent},
                    CommandRow{"LangGraph", "langgraph dev", LabRole::agent},
                    CommandRow{"AutoGen", "AutoGenStudio", LabRole::agent},
                    CommandRow{"CrewAi", "crewai run", LabRole::agent},
                    CommandRow{"OpenInterpreter", "openinterpreter", LabRole::agent},
                    CommandRow{"NodeGateway", "node gateway.js", LabRole::agent},
                    CommandRow{"NodejsGateway", "/usr/bin/nodejs gateway.js", LabRole::agent},
                    CommandRow{"NodeAlone", "node index.js", LabRole::none},
                    CommandRow{"OthersGateway", "nodemon gateway.js", LabRole::none},
                    CommandRow{"Jupyter", "jupyter-lab", LabRole::agent},
                    CommandRow{"IPython", "ipython", LabRole::agent}),
    rowName<CommandRow>);

INSTANTIATE_TEST_SUITE_P(Ordinary, CommandRole,
                         testing::Values(CommandRow{"Nothing", "", LabRole::none},
                                         CommandRow{"Slashes", "///", LabRole::none},
                                         CommandRow{"Editor", "vim notes.txt", LabRole::none},
                                         CommandRow{"Python", "python3 app.py", LabRole::none}),
                         rowName<CommandRow>);

TEST(ClassifyLabRole, GoesByTheNameItIsGiven) {
  const std::vector<std::string> none;
  EXPECT_EQ(classifyLabRole("/usr/bin/Ollama/", none, ""), LabRole::inference);
  EXPECT_EQ(classifyLabRole("LLAMA-SERVER", none, ""), LabRole::inference);
  EXPECT_EQ(classifyLabRole("bash", words("vllm serve"), "vllm serve"), LabRole::none);
  EXPECT_EQ(classifyLabRole("torch-x", none, "--max-steps"), LabRole::training);
}

TEST(ClassifyLabRole, ReadsArgumentsAndLineEachForItself) {
  EXPECT_EQ(classifyLabRole("x", words("generate"), "mlx"), LabRole::inference);
  EXPECT_EQ(classifyLabRole("x", words("chat"), "mlx generate"), LabRole::none);
  EXPECT_EQ(classifyLabRole("python", words("Train"), ""), LabRole::training);
  EXPECT_EQ(classifyLabRole("python", words("a/train_x.py"), "python"), LabRole::training);
  EXPECT_EQ(classifyLabRole("x", words("vllm"), "x"), LabRole::none);
  EXPECT_EQ(classifyLabRole("x", words("x"), "VLLM"), LabRole::inference);
}

TEST(ClassifyLabRole, LowersByUnicode) {
  // The Kelvin sign is a capital k, and a dotted capital I is an i, scalar by scalar.
  EXPECT_EQ(classifyLabRole("\u212Aobold", words("x"), "\u212Aobold"), LabRole::inference);
  EXPECT_EQ(classifyLabRole("python", words("TRAİN"), "python"), LabRole::training);
}

TEST(WrapperExecutables, AreTen) {
  EXPECT_EQ(ProcessScanner::wrapperExecutables().size(), 10U);
}

// Training alone.

Strings sorted(Strings texts) {
  std::ranges::sort(texts);
  return texts;
}

bool trains(const std::string& exe, const std::string& lower, bool isServing = false) {
  return isTrainingProcess(exe, lower, words(lower), isServing);
}

template <std::size_t kSize>
Strings sorted(const std::array<std::string_view, kSize>& markers) {
  return sorted(Strings(markers.begin(), markers.end()));
}

/// Random command lines compare the rest of the markers (rules_against_reference_test.cpp).
TEST(TrainingEvidence, IsThatOfTheReference) {
  EXPECT_EQ(sorted(kTrainingMarkers), sorted(reference::trainingMarkers));
  EXPECT_EQ(sorted(kLoraMarkers), sorted(reference::loraMarkers));
  EXPECT_EQ(sorted(kFrameworkMarkers), sorted(reference::frameworkMarkers));
}

TEST(TrainingEvidence, MakesATrainingEvenOfAServerEachForItself) {
  for (const auto* list :
       {&reference::trainingMarkers, &reference::loraMarkers, &reference::frameworkMarkers}) {
    for (const auto& marker : *list) {
      const std::string line = "python <" + marker + ">";
      EXPECT_TRUE(isTrainingProcess("python", line, {}, false)) << marker;
      EXPECT_TRUE(isTrainingProcess("python", line, {}, true)) << marker;
    }
  }
}

TEST(TrainingEvidence, ProvesNothingOfOtherPrograms) {
  for (const auto& marker : reference::trainingMarkers) {
    EXPECT_FALSE(isTrainingProcess("perl", "<" + marker + ">", {}, false)) << marker;
  }
}

struct DetectionRow {
  const char* name;
  const char* exe;
  const char* lower;
  bool isServing;
  bool trains;
};

std::ostream& operator<<(std::ostream& out, const DetectionRow& row) {
  return out << row.exe << " : " << row.lower;
}

class TrainingDetection : public testing::TestWithParam<DetectionRow> {};

TEST_P(TrainingDetection, WeighsTheEvidence) {
  const DetectionRow& row = GetParam();
  EXPECT_EQ(trains(row.exe, row.lower, row.isServing), row.trains);
}

INSTANTIATE_TEST_SUITE_P(
    Gate, TrainingDetection,
    testing::Values(DetectionRow{"PythonInExe", "python3.12", "x --max-steps 1", false, true},
                    DetectionRow{"PythonInLine", "x", "/env/python x --max-steps 1", false, true},
                    DetectionRow{"TorchInExe", "torch-x", "x --max-steps 1", false, true},
                    DetectionRow{"TorchInLineOnly", "x", "torch --max-steps 1", false, false},
                    DetectionRow{"Torchrun", "x", "torchrun", false, true},
                    DetectionRow{"Mlx", "x", "mlx --max-steps 1", false, true},
                    DetectionRow{"Jax", "x", "jax --max-steps 1", false, true},
                    DetectionRow{"Accelerate", "accelerate", "--max-steps 1", false, true},
                    DetectionRow{"AccelerateInLine", "x", "accelerate launch", false, false},
                    DetectionRow{"AccelerateAsPart", "accelerated", "--max-steps 1", false, false},
                    DetectionRow{"DeepspeedInExe", "deepspeed-x", "--max-steps 1", false, true},
                    DetectionRow{"DeepspeedInLine", "x", "deepspeed", false, false},
                    DetectionRow{"Axolotl", "axolotl", "--max-steps 1", false, true},
                    DetectionRow{"AxolotlInLine", "x", "axolotl train y", false, false},
                    DetectionRow{"Unsloth", "x", "unsloth", false, true},
                    DetectionRow{"LlamaFactory", "x", "llamafactory", false, true},
                    DetectionRow{"LlamaDashFactory", "x", "llama-factory", false, true},
                    DetectionRow{"LlamaUnderscoreFactory", "x", "llama_factory", false, false},
                    DetectionRow{"Torchtune", "x", "torchtune", false, true},
                    DetectionRow{"Litgpt", "x", "litgpt", false, true},
                    DetectionRow{"Autotrain", "x", "autotrain", false, true}),
    rowName<DetectionRow>);

INSTANTIATE_TEST_SUITE_P(
    Evidence, TrainingDetection,
    testing::Values(
        DetectionRow{"NoEvidence", "python", "python x", false, false},
        DetectionRow{"ElementTrainFirst", "python", "train", false, true},
        DetectionRow{"ElementTrainLast", "python", "x train", false, true},
        DetectionRow{"ElementTrainOption", "python", "x --train", true, true},
        DetectionRow{"TrainAsPart", "python", "x trained", false, false},
        DetectionRow{"TrainScript", "python", "x a/train_8b.py", true, true},
        DetectionRow{"TrainDashScript", "python", "train-8b.py", true, true},
        DetectionRow{"ScriptTrained", "python", "trained.py", false, false},
        DetectionRow{"ScriptMyTrain", "python", "my_train_8b.py", false, false},
        DetectionRow{"ScriptInTrainFolder", "python", "train_8b/x.py", false, false},
        DetectionRow{"LoraAlone", "python", "x lora", false, false},
        DetectionRow{"AdapterAlone", "python", "x adapter", false, false},
        DetectionRow{"LoraBesideMlxLm", "python", "mlx_lm x lora", false, true},
        DetectionRow{"LoraBesideMlxLmServing", "python", "mlx_lm x lora", true, false},
        DetectionRow{"LoraBesideMlxDashLm", "python", "mlx-lm x lora", false, false},
        DetectionRow{"LoraWeights", "python", "mlx_lm lora.gguf", false, true},
        DetectionRow{"LoraWeightsOnly", "python", "mlx_lm x-lora.safetensors", false, false},
        DetectionRow{"AdapterBesideTrainServing", "python", "x adapter --train", true, true},
        DetectionRow{"PeftServing", "python", "x peft", true, true}),
    rowName<DetectionRow>);

TEST(IsTrainingProcess, ReadsArgumentsAndLineEachForItself) {
  for (const std::string word : {"train", "finetune", "fine-tune", "--train", "train_x.py"}) {
    EXPECT_TRUE(isTrainingProcess("python", "", words("x " + word), true)) << word;
  }
  EXPECT_FALSE(isTrainingProcess("x", "x", words("python train.py"), false));
  EXPECT_TRUE(isTrainingProcess("x", "mlx_lm", words("my-lora"), false));
  EXPECT_FALSE(isTrainingProcess("x", "mlx_lm my-lora", {}, false));
}

TEST(IsTrainingProcess, DoubtsAServerOnlyWhenItsLineNamesLora) {
  EXPECT_FALSE(isTrainingProcess("x", "mlx_lm my-lora", words("my-lora"), true));
  EXPECT_TRUE(isTrainingProcess("x", "mlx_lm", words("my-lora"), true));
}

TEST(IsTrainingProcess, TakesItsTextsAsTheyAre) {
  EXPECT_FALSE(isTrainingProcess("PYTHON", "TRAIN.PY", words("TRAIN"), false));
  EXPECT_FALSE(isTrainingProcess("python", "TRAIN.PY", words("TRAIN"), false));
}

}  // namespace
