#include <gtest/gtest.h>

#include <ostream>

#include "fakes/row_name.h"
#include "scanner/second_look/corpus.h"

namespace {

struct NameRow {
  const char* name;
  std::vector<std::string> arguments;
  std::string displayName;
};

std::ostream& operator<<(std::ostream& out, const NameRow& row) {
  return out << row.name;
}

class WorkloadName : public testing::TestWithParam<NameRow> {};

TEST_P(WorkloadName, TellsProductModelAndPort) {
  EXPECT_EQ(recognized(GetParam().arguments).name, GetParam().displayName);
}

using N = NameRow;
INSTANTIATE_TEST_SUITE_P(
    All, WorkloadName,
    testing::Values(
        N{"Operand",
          {"vllm", "serve", "Qwen/Qwen2.5-7B-Instruct", "--port", "8000"},
          "vLLM: Qwen2.5 7B Instruct  (:8000)"},
        N{"ServedNameBeforePath",
          {"vllm", "serve", "/models/x", "--served-model-name", "llama-3"},
          "vLLM: llama 3"},
        N{"Cache",
          {"text-embeddings-router", "--model-id", "/d/models--BAAI--bge-m3/snapshots/0"},
          "TEI: bge m3"},
        N{"Hub",
          {"llama-server", "-hf", "unsloth/Qwen3-8B-GGUF:Q4_K_M"},
          "LM Studio: Qwen3 8B GGUF Q4 K M"},
        N{"Override",
          {"python", "-m", "verl.trainer.main_ppo", "actor_rollout_ref.model.path=a/B-7B"},
          "verl PPO: B 7B"},
        N{"DottedOption",
          {"python", "-m", "openrlhf.cli.train_sft", "--actor.model_name_or_path", "a/B"},
          "OpenRLHF SFT: B"},
        N{"Recipe", {"axolotl", "train", "examples/llama-3/lora-1b.yml"}, "Axolotl: lora 1b"},
        N{"RecipeThatSaysNothing", {"axolotl", "train", "config.yaml"}, "Axolotl"},
        N{"PortOfAnAddress", {"wyoming-piper", "--uri", "tcp://0.0.0.0:10200"}, "Piper  (:10200)"},
        N{"PortThatIsNone", {"vllm", "--port", "$PORT"}, "vLLM"},
        N{"LongModel",
          {"vllm", "serve", "a/" + std::string(60, 'x')},
          "vLLM: " + std::string(45, 'x') + "…"},
        N{"McpOfAScope", {"npx", "-y", "@playwright/mcp@latest"}, "MCP: playwright"},
        N{"McpOfAFolder", {"node", "/h/tradingview-mcp/server.js"}, "MCP: tradingview"},
        N{"McpOfNobody",
          {"uvicorn", "mcp_server.main:app", "--port", "9000"},
          "MCP server  (:9000)"},
        N{"Rank",
          {"python", "train.py", "--local_rank=3", "--world_size", "8"},
          "Training: train.py  (rank 3 of 8)"},
        N{"Engine", {"VLLM::EngineCore"}, "vLLM engine"},
        N{"Worker", {"VLLM::Worker_TP0"}, "vLLM worker 0"},
        N{"Scheduler", {"sglang::scheduler_DP0_TP3"}, "SGLang scheduler 3"},
        N{"MlxTrains",
          {"python", "-m", "mlx_lm", "lora", "--model", "x", "--train"},
          "LoRA fine-tune: x"},
        N{"NoRoleButAProduct", {"litgpt", "evaluate", "m"}, "LitGPT evaluate"}),
    rowName<NameRow>);

}  // namespace
