#include <gtest/gtest.h>

#include <ostream>
#include <string>

#include "fakes/row_name.h"
#include "scanner/process_scanner.h"

namespace {

using ProcessScanner::basenameModel;

struct ModelRow {
  const char* name;
  const char* model;
  const char* shown;
};

std::ostream& operator<<(std::ostream& out, const ModelRow& row) {
  return out << row.model;
}

class ModelName : public testing::TestWithParam<ModelRow> {};

TEST_P(ModelName, IsShortAndReadable) {
  EXPECT_EQ(basenameModel(GetParam().model), GetParam().shown);
}

INSTANTIATE_TEST_SUITE_P(
    All, ModelName,
    testing::Values(
        ModelRow{"Path", "/models/Qwen2.5-7B-Instruct-4bit", "Qwen2.5 7B Instruct 4bit"},
        ModelRow{"Repository", "mlx-community/Llama-3.2-3B-Instruct-4bit",
                 "Llama 3.2 3B Instruct 4bit"},
        ModelRow{"SuffixAlone", ".gguf", "Unknown model"}, ModelRow{"Empty", "", "Unknown model"},
        ModelRow{"Slashes", "///", "/"}, ModelRow{"TrailingSlashes", "a/b//", "b"},
        ModelRow{"Underscores", "a_b__c", "a b  c"}, ModelRow{"SuffixInCapitals", "A.GGUF", "A"},
        ModelRow{"Safetensors", "a.safetensors", "a"}, ModelRow{"Bin", "a.bin", "a"},
        ModelRow{"Pt", "a.pt", "a"}, ModelRow{"Pth", "a.pth", "a"}, ModelRow{"Mlx", "a.mlx", "a"},
        ModelRow{"SuffixesInTheirOrder", "x.mlx.gguf", "x"},
        ModelRow{"SuffixesInAnotherOrder", "x.gguf.mlx", "x.gguf"},
        ModelRow{"SuffixOnceEach", "x.gguf.gguf", "x.gguf"},
        ModelRow{"AllSuffixes", "x.mlx.pth.pt.bin.safetensors.gguf", "x"},
        ModelRow{"SuffixInside", "a.gguf.x", "a.gguf.x"},
        ModelRow{"OtherSuffix", "a.ckpt", "a.ckpt"},
        ModelRow{"SuffixLoweredByUnicode", "a.bİn", "a"},
        ModelRow{"SuffixBehindAPrependedCharacter", "a\u0600.pt", "a"}),
    rowName<ModelRow>);

TEST(BasenameModel, KeepsUpTo48Characters) {
  const std::string name(48, 'x');
  EXPECT_EQ(basenameModel(name), name);
  EXPECT_EQ(basenameModel(name + "x"), std::string(45, 'x') + "…");
  EXPECT_EQ(basenameModel(name + ".gguf"), name);
}

TEST(BasenameModel, CountsWhatAReaderSees) {
  std::string accents;
  for (int i = 0; i < 48; ++i) accents += "e\u0301";
  EXPECT_EQ(basenameModel(accents), accents);
  EXPECT_EQ(basenameModel(accents + "x"), accents.substr(0, std::size_t{45} * 3) + "…");
}

}  // namespace
