#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <ostream>
#include <string_view>

#include "fakes/row_name.h"
#include "reference/process_rules.h"
#include "scanner/command_words.h"
#include "scanner/fixed_rules/markers.h"
#include "scanner/process_scanner.h"

namespace {

using ProcessScanner::isTrainingProcess;
using reference::Strings;

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
