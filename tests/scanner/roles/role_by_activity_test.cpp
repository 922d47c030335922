#include <gtest/gtest.h>

#include <ostream>

#include "fakes/row_name.h"
#include "scanner/recognition_corpus.h"

namespace {

struct ActivityRow {
  const char* name;
  std::vector<std::string> arguments;
  LabRole role;
};

std::ostream& operator<<(std::ostream& out, const ActivityRow& row) {
  return out << row.name;
}

class ActivityByName : public testing::TestWithParam<ActivityRow> {};

TEST_P(ActivityByName, GivesTheRole) {
  EXPECT_EQ(recognized(GetParam().arguments).role, GetParam().role);
}

using A = ActivityRow;
INSTANTIATE_TEST_SUITE_P(
    Programs, ActivityByName,
    testing::Values(
        A{"LastWord", {"/usr/local/bin/llm-pretrain"}, LabRole::training},
        A{"LastWordButForTheDevice", {"llm-pretrain-cli"}, LabRole::training},
        A{"Tickets", {"/usr/local/bin/train-ticket-service"}, LabRole::none},
        A{"Timetable", {"/usr/bin/train-timetable", "--daemon"}, LabRole::none},
        A{"Workload", {"/opt/trainer-workload-service"}, LabRole::none},
        A{"Station", {"java", "-jar", "train-station.jar"}, LabRole::none},
        A{"ServiceOfJava", {"java", "-jar", "/srv/trainer-workload-service.jar"}, LabRole::none},
        A{"JarOfATraining", {"java", "-jar", "booking-training.jar"}, LabRole::none},
        A{"ServiceOfDotnet", {"dotnet", "Training-Api.dll"}, LabRole::none},
        A{"Help", {"llamafactory-cli", "train", "-h"}, LabRole::none},
        A{"ProviderOfAModel", {"pi", "--provider", "x", "--model", "y"}, LabRole::agent},
        A{"ProviderAlone", {"dnsupdate", "--provider", "x"}, LabRole::none},
        A{"TrainsWithSettings", {"libreyolo", "train", "data=d.yaml"}, LabRole::training},
        A{"TrainsNobodyKnowsWhat", {"railway", "train", "list"}, LabRole::none},
        A{"Ruby", {"ruby", "train_service.rb"}, LabRole::none},
        A{"AddsAServer", {"claude", "mcp", "add", "x", "--", "npx", "x-mcp"}, LabRole::none},
        A{"ListsServers", {"codex", "mcp", "list"}, LabRole::none},
        A{"IsAServer", {"claude", "mcp", "serve"}, LabRole::agent},
        A{"InstallsInOnePiece", {"npm install -g @anthropic-ai/claude-code"}, LabRole::none},
        A{"ClonesInOnePiece", {"git clone https://github.com/vllm-project/vllm"}, LabRole::none},
        A{"WithABlankInItsPath", {"/opt/find my/llama-server"}, LabRole::inference},
        A{"FoldersOfAFileManager", {"nemo", "/h/finetune"}, LabRole::none},
        A{"ReadsSettings", {"rl", "@", "a.toml"}, LabRole::training},
        A{"HasAShortName", {"rl", "a.toml"}, LabRole::none}),
    rowName<ActivityRow>);

INSTANTIATE_TEST_SUITE_P(
    Scripts, ActivityByName,
    testing::Values(
        A{"Trains", {"python", "train_dog.py"}, LabRole::training},
        A{"TrainsAndEvaluates", {"python", "train_and_eval.py"}, LabRole::training},
        A{"Prepares", {"python", "prepare_train_data.py"}, LabRole::none},
        A{"PreparesWithAnOption", {"python", "prepare.py", "--train"}, LabRole::none},
        A{"Preprocesses", {"python", "preprocess_sft.py"}, LabRole::none},
        A{"PreprocessesInAModule", {"python", "-m", "preprocess.train_data"}, LabRole::none},
        A{"Converts", {"python", "convert_lora_to_ckpt.py", "--model", "a/B"}, LabRole::none},
        A{"ServesWhatItBuilds",
          {"python", "generate_api.py", "--model", "a", "--port", "80"},
          LabRole::inference},
        A{"MakesData", {"python", "create_pretraining_data.py"}, LabRole::none},
        A{"Splits", {"python", "train_test_split.py"}, LabRole::none},
        A{"Schedule", {"python", "train_schedule.py"}, LabRole::none},
        A{"Tokenizer", {"python", "train_tokenizer.py"}, LabRole::none},
        A{"GeneratesOnSeveral",
          {"torchrun", "--nproc_per_node=8", "generate.py", "--ckpt-path", "/m"},
          LabRole::inference},
        A{"GeneratesData", {"torchrun", "--nproc_per_node=8", "generate.py"}, LabRole::none},
        A{"ModuleThatRuns", {"python", "-m", "src.training_pipeline.run"}, LabRole::training},
        A{"ModuleOfAService", {"python", "-m", "train_service.main"}, LabRole::none},
        A{"SupervisorOfAModel",
          {"python", "supervisor_watch.py", "--model", "gpt-5"},
          LabRole::none},
        A{"WorkerOfAModel",
          {"python", "model_worker.py", "--model-path", "/m/vicuna"},
          LabRole::inference},
        A{"OneOfSeveral", {"python", "main.py", "--local_rank=0"}, LabRole::training},
        A{"CarriedWithItsFolder", {"uv", "run", "examples/run_grpo.py"}, LabRole::training},
        A{"CarriedByAnEnvironment", {"conda", "run", "-n", "e", "finetune.py"}, LabRole::training},
        A{"ServesSpeech", {"python", "/opt/whisper_server.py"}, LabRole::inference},
        A{"ServesInItsFolder", {"python", "/opt/embedding-api/main.py"}, LabRole::inference},
        A{"ServesInAPackage", {"python", "-m", "embedding_service.main"}, LabRole::inference},
        A{"ServedInAProject",
          {"/opt/whisper-rocm/venv/bin/python", "-m", "uvicorn", "main:app"},
          LabRole::inference},
        A{"AppOfNobody", {"/opt/shop/venv/bin/python", "-m", "uvicorn", "main:app"}, LabRole::none},
        A{"AppOfAGeneralName", {"uvicorn", "notebook:app"}, LabRole::none},
        A{"SpeaksWithAServer", {"python", "tts_server_client.py"}, LabRole::none},
        A{"ShowsEmbeddings", {"python", "/opt/embedding-dashboard/app.py"}, LabRole::none},
        A{"WorksOnSpeech", {"/opt/whisper/venv/bin/python", "main.py"}, LabRole::none},
        A{"OneWordOfMcp", {"python", "/opt/mcpserver/main.py"}, LabRole::agent},
        A{"HelpOfAScript", {"python", "train.py", "--help"}, LabRole::none},
        A{"GivenARecipe", {"python", "run.py", "config/train_flux.yaml"}, LabRole::training},
        A{"GivenATimetable", {"python", "run.py", "config/train_schedule.yaml"}, LabRole::none},
        A{"GivenAnEvaluation", {"python", "run.py", "config/eval_sft.yaml"}, LabRole::none},
        A{"Draws", {"python", "sample_video.py", "--infer-steps", "50"}, LabRole::inference},
        A{"DrawsASample", {"python", "sample.py", "--size", "50"}, LabRole::none}),
    rowName<ActivityRow>);

}  // namespace
