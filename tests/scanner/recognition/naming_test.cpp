#include <gtest/gtest.h>

#include <ostream>

#include "fakes/row_name.h"
#include "scanner/recognition/corpus.h"

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
        N{"ScriptOfTorchrun",
          {"torchrun", "--nproc-per-node=8", "run_clm.py"},
          "Training: run_clm.py"},
        N{"ModuleOfTorchrun",
          {"python", "/v/bin/torchrun", "--nproc_per_node=2", "-m", "mypkg.main"},
          "Training: mypkg.main"},
        N{"ScriptOfDistributed",
          {"python", "-m", "torch.distributed.launch", "--nproc_per_node=8", "main.py"},
          "Training: main.py"},
        N{"ScriptOfAccelerate",
          {"accelerate", "launch", "--num_processes", "4", "main.py"},
          "Training: main.py"},
        N{"ScriptOfDeepspeed", {"deepspeed", "--num_gpus", "8", "main.py"}, "Training: main.py"},
        N{"ScriptOfSrun", {"srun", "-n", "8", "torchrun", "main.py"}, "Training: main.py"},
        N{"WorkerOfALauncher",
          {"python", "-u", "main.py", "--local_rank=0"},
          "Training: main.py  (rank 0)"},
        N{"OperandOfATraining",
          {"litgpt", "finetune_lora", "microsoft/phi-2"},
          "LitGPT LoRA: phi 2"},
        N{"RecipeThatIsNoOperand",
          {"tune", "run", "lora_finetune_single_device"},
          "TorchTune LoRA"},
        N{"RecipeInPython",
          {"xtuner", "train", "internlm2_7b_qlora.py"},
          "XTuner: internlm2 7b qlora"},
        N{"RecipeOfSettings", {"spacy", "train", "configs/ner_trf.cfg"}, "spaCy train: ner trf"},
        N{"RecipeOfLightning",
          {"python", "main.py", "fit", "--config", "configs/vit.yaml"},
          "Lightning fit: vit"},
        N{"LightningThatSaysNothing",
          {"python", "main.py", "fit", "--config", "config.yaml"},
          "Training: main.py"},
        N{"TagBehindTheVerb", {"flm", "serve", "llama3.2:1b"}, "FastFlowLM: llama3.2 1b"},
        N{"OperandBehindAPort",
          {"ramalama", "serve", "-p", "9999", "granite"},
          "RamaLama: granite  (:9999)"},
        N{"PortOfItsOwnOption",
          {"vllm", "serve", "a/B", "--listen-port", "8005"},
          "vLLM: B  (:8005)"},
        N{"PortInAnAddress",
          {"sglang", "serve", "--model-path", "a/B", "--address", "0.0.0.0:30000"},
          "SGLang: B  (:30000)"},
        N{"PortInShort",
          {"bentoml", "serve", "service:MyModel", "-p", "3000"},
          "BentoML: MyModel  (:3000)"},
        N{"PromptThatIsNoPort", {"claude", "-p", "2024"}, "Claude Code"},
        N{"Nerfstudio", {"ns-train", "nerfacto"}, "nerfstudio train"},
        N{"LeRobotByItsPath", {"python", "lerobot/scripts/train.py"}, "LeRobot train"},
        N{"Rasa", {"python", "/v/bin/rasa", "train", "nlu"}, "Rasa train"},
        N{"TorchServeWorker",
          {"python", "/v/lib/python3.10/site-packages/ts/model_service_worker.py"},
          "TorchServe worker"},
        N{"AiderAsAScript", {"python", "/h/aider/aider.py"}, "Aider"},
        N{"TabbyApiByItsFolder", {"python", "/srv/tabbyAPI/main.py"}, "TabbyAPI"},
        N{"TabbyApiByItsPython", {"/srv/tabbyAPI/venv/bin/python", "main.py"}, "TabbyAPI"},
        N{"ModuleOfAProjectsPython", {"/srv/tabbyAPI/venv/bin/python", "-m", "pylsp"}, "python"},
        N{"NoRoleButAProduct", {"litgpt", "evaluate", "m"}, "LitGPT evaluate"}),
    rowName<NameRow>);

}  // namespace
