#include "scanner/mapped_models.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "fakes/row_name.h"
#include "fakes/scripted_platform.h"
#include "scanner/repeated_scan.h"

namespace {

struct ModelFileRow {
  const char* name;
  const char* path;
  bool isModel;
};

class ModelFile : public testing::TestWithParam<ModelFileRow> {};

TEST_P(ModelFile, IsKnownByItsName) {
  EXPECT_EQ(ProcessScanner::isModelFile(GetParam().path), GetParam().isModel);
}

constexpr ModelFileRow kModelFileRows[] = {
    {"Gguf", "/models/Llama-3-8B.Q4_K_M.GGUF", true},
    {"Safetensors", "/m/model-00001-of-00004.safetensors", true},
    {"Deleted", "/m/a.gguf (deleted)", true},
    {"BlobOfOllama", "/home/a/.ollama/models/blobs/sha256-6a0746a1ec1a", true},
    {"TorchBin", "/m/pytorch_model.bin", true},
    {"OtherBin", "/usr/lib/locale/locale.bin", false},
    {"Library", "/opt/cuda/lib64/libcublasLt.so.12", false},
    {"Data", "/data/train.arrow", false},
    {"Nothing", "", false},
};

INSTANTIATE_TEST_SUITE_P(Table, ModelFile, testing::ValuesIn(kModelFileRows),
                         rowName<ModelFileRow>);

class MappedSampling : public testing::Test {
 protected:
  MappedSampling() {
    resetMachine();
    machine().processes = {{.pid = 7,
                            .arguments = {"/usr/bin/ollama", "serve"},
                            .footprintMB = 100,
                            .fileMB = 1500,
                            .mappedFiles = {{"/m/a.gguf", 1400ULL << 20}, {"/l/b.so", 1 << 20}}}};
  }
  const VordaProcess& scanned() {
    scan_.scan(50, {}, processes_);
    EXPECT_EQ(processes_.size(), 1U);
    return processes_.front();
  }
  ScriptedProcess& process() { return machine().processes[0]; }

  ProcessScanner::RepeatedScan scan_;
  std::vector<VordaProcess> processes_;
};

TEST_F(MappedSampling, StandsInTheRecord) {
  EXPECT_EQ(scanned().mapped,
            (MappedMemory{.mappedMB = 1500,
                          .modelMB = 1400,
                          .files = {{"a.gguf", 1400, true}, {"b.so", 1, false}}}));
  EXPECT_EQ(scanned().memMB, 100) << "it is never part of the footprint";
}

TEST_F(MappedSampling, ReadsFilesOnceAndThenOnceAMinute) {
  scanned();
  machine().clock += 59'000'000'000;
  scanned();
  EXPECT_EQ(machine().mapsRead, 1);
  machine().clock += 1'000'000'000;
  scanned();
  EXPECT_EQ(machine().mapsRead, 2);
}

TEST_F(MappedSampling, ReadsNoFilesOfOthers) {
  process().effectiveUid = 1001;
  ASSERT_TRUE(scanned().mapped);
  EXPECT_EQ(scanned().mapped->mappedMB, 1500);
  EXPECT_TRUE(scanned().mapped->files.empty());
  EXPECT_EQ(machine().mapsRead, 0);
}

TEST_F(MappedSampling, LeavesOutWhatIsLittle) {
  process().fileMB = 255;
  EXPECT_FALSE(scanned().mapped);
  process().fileMB = 256;
  EXPECT_TRUE(scanned().mapped);
  process().footprintMB = 1281;
  EXPECT_FALSE(scanned().mapped) << "less than a fifth";
  process().sharedMB = 300;
  ASSERT_TRUE(scanned().mapped);
  EXPECT_EQ(scanned().mapped->mappedMB, 0);
  EXPECT_EQ(scanned().mapped->sharedMB, 300);
  process().sharedMB = process().fileMB = 0;
  EXPECT_FALSE(scanned().mapped);
}

TEST_F(MappedSampling, MasksWhatIsSecretInAFilesName) {
  const std::string blob =
      "sha256-6a0746a1ec1aef3e7ec53868f220ff6e389f6f8ef87a01d77c96807de94ca2aa";
  process().mappedFiles = {{"/b/blobs/" + blob, 1400ULL << 20},
                           {"/m/token=verysecret1234.gguf", 1 << 20}};
  const auto& files = scanned().mapped->files;
  ASSERT_EQ(files.size(), 2U);
  EXPECT_EQ(files[0].name, blob);
  EXPECT_EQ(files[1].name.find("verysecret"), std::string::npos);
  EXPECT_TRUE(files[1].isModel);
}

TEST_F(MappedSampling, LibrariesAreNoModel) {
  process().mappedFiles = {{"/l/b.so", 1400ULL << 20}, {"/m/a.gguf", 500ULL << 20}};
  EXPECT_EQ(scanned().mapped->modelMB, 0);
}

TEST_F(MappedSampling, NeverSaysMoreThanIsInMemory) {
  process().mappedFiles[0].bytes = 40ULL << 30;
  EXPECT_EQ(scanned().mapped->modelMB, 1500);
}

TEST_F(MappedSampling, NamesTheModelWhereTheCommandLineHasNone) {
  process().arguments = {"/opt/llama.cpp/llama-server", "--port", "80"};
  EXPECT_EQ(scanned().displayName, "LM Studio: a  (:80)");
  EXPECT_EQ(scanned().displayName, "LM Studio: a  (:80)") << "said once";
  process().arguments = {"/opt/llama.cpp/llama-server", "-m", "/m/other.gguf"};
  EXPECT_EQ(scanned().displayName.find(": a"), std::string::npos);
}

}  // namespace
