#include "scanner/naming/naming_row.h"

namespace {

class TrainingName : public testing::TestWithParam<NamingRow> {};

TEST_P(TrainingName, IsThatOfTheFirstMethodThatTheLineTells) {
  expectName(words(GetParam().command), GetParam().displayName, GetParam().product);
}

INSTANTIATE_TEST_SUITE_P(
    Methods, TrainingName,
    testing::Values(
        NamingRow{"Qlora", "python x --qlora --model a_b", "QLoRA fine-tune: a b", "Fine-tune"},
        NamingRow{"QDashLora", "python q-lora", "QLoRA fine-tune", "Fine-tune"},
        NamingRow{"QUnderscoreLora", "python Q_LoRA", "QLoRA fine-tune", "Fine-tune"},
        NamingRow{"QloraBeforeMlxLora", "python -m mlx_lm.lora --qlora", "QLoRA fine-tune",
                  "Fine-tune"},
        NamingRow{"MlxLora", "python -m mlx_lm.lora --model x/Llama-3-8B",
                  "LoRA fine-tune: Llama 3 8B", "Fine-tune"},
        NamingRow{"MlxDashLora", "mlx-lm.lora --model a", "LoRA fine-tune: a", "Fine-tune"},
        NamingRow{"MlxLmLora", "mlx_lm lora", "LoRA fine-tune", "Fine-tune"},
        NamingRow{"MlxDashLmLora", "mlx-lm lora", "LoRA fine-tune", "Fine-tune"},
        NamingRow{"LoraAndTrain", "python train_lora.py --model_name_or_path meta-llama/Llama-2-7b",
                  "LoRA fine-tune: Llama 2 7b", "Fine-tune"},
        NamingRow{"LoraAndPeft", "python peft_lora.py", "LoRA fine-tune", "Fine-tune"},
        NamingRow{"LoraOption", "python x.py --lora-rank 8", "LoRA fine-tune", "Fine-tune"},
        NamingRow{"LoraAndFinetune", "python lora_finetune.py", "LoRA fine-tune", "Fine-tune"},
        NamingRow{"DoraAlone", "python dora.py", "Model training", "Training"},
        NamingRow{"Finetune", "python finetune.py -m a", "Fine-tune: a", "Fine-tune"},
        NamingRow{"FineDashTune", "python fine-tune x", "Fine-tune", "Fine-tune"},
        NamingRow{"FineUnderscoreTune", "python fine_tune.py", "Fine-tune", "Fine-tune"},
        NamingRow{"Sft", "python sft.py", "Fine-tune", "Fine-tune"},
        NamingRow{"FineUnderscoreTuning", "python fine_tuning", "Model training", "Training"},
        NamingRow{"Dpo", "python dpo.py --base-model a", "DPO train: a", "Fine-tune"},
        NamingRow{"DpoBeforeUnsloth", "unsloth dpo", "DPO train", "Fine-tune"},
        NamingRow{"Unsloth", "unsloth --base_model a", "Unsloth fine-tune: a", "Fine-tune"},
        NamingRow{"Axolotl", "axolotl train x --model a", "Axolotl train", "Fine-tune"},
        NamingRow{"LlamaFactory", "llamafactory-cli --model a", "Llama-Factory", "Fine-tune"},
        NamingRow{"LlamaDashFactory", "llama-factory x", "Llama-Factory", "Fine-tune"},
        NamingRow{"Torchtune", "torchtune x --model a", "TorchTune", "Fine-tune"}),
    rowName<NamingRow>);

INSTANTIATE_TEST_SUITE_P(
    Otherwise, TrainingName,
    testing::Values(
        NamingRow{"Script", "python /a/b/Pretrain.py x", "Training: Pretrain.py", "Training"},
        NamingRow{"FirstScriptThatTellsOfTraining", "python x.py my_train.py --max-steps 1",
                  "Training: my_train.py", "Training"},
        NamingRow{"FolderTellsOfTraining", "python train/x.py", "Training: x.py", "Training"},
        NamingRow{"ScriptNamedAfterLora", "python my_lora.py --max-steps 1", "Training: my_lora.py",
                  "Training"},
        NamingRow{"ScriptEndingInCapitals", "python TRAIN.PY", "Model training", "Training"},
        NamingRow{"ScriptWithCapitals", "python RETRAIN.py --max-steps 1", "Training: RETRAIN.py",
                  "Training"},
        NamingRow{"Torchrun", "torchrun x.py --model a", "Training: torchrun", "Training"},
        NamingRow{"ScriptBeforeTorchrun", "torchrun train.py", "Training: train.py", "Training"},
        NamingRow{"Accelerate", "accelerate launch x.py", "Training: accelerate", "Training"},
        NamingRow{"Model", "python x.py --max-steps 1 --model a", "Training: a", "Training"},
        NamingRow{"Nothing", "python x.py --max-steps 1", "Model training", "Training"}),
    rowName<NamingRow>);

INSTANTIATE_TEST_SUITE_P(
    Models, TrainingName,
    testing::Values(
        NamingRow{"ModelName", "unsloth --model-name a", "Unsloth fine-tune: a", "Fine-tune"},
        NamingRow{"ModelUnderscoreName", "unsloth --model_name a", "Unsloth fine-tune: a",
                  "Fine-tune"},
        NamingRow{"EmptyOptionIsAValue", "unsloth --model= x/llama",
                  "Unsloth fine-tune: Unknown model", "Fine-tune"},
        NamingRow{"OptionBeforeArgument", "unsloth x/llama --model a", "Unsloth fine-tune: a",
                  "Fine-tune"},
        NamingRow{"CommunityModel", "unsloth MLX-Community-x", "Unsloth fine-tune: MLX Community x",
                  "Fine-tune"},
        NamingRow{"HuggingFace", "unsloth HuggingFace", "Unsloth fine-tune: HuggingFace",
                  "Fine-tune"},
        NamingRow{"Safetensors", "unsloth a.SafeTensors", "Unsloth fine-tune: a", "Fine-tune"},
        NamingRow{"BareWord", "unsloth llama3", "Unsloth fine-tune", "Fine-tune"},
        NamingRow{"Llama", "unsloth models/llama3", "Unsloth fine-tune: llama3", "Fine-tune"},
        NamingRow{"Qwen", "unsloth Qwen/x", "Unsloth fine-tune: x", "Fine-tune"},
        NamingRow{"Mistral", "unsloth x/MISTRAL", "Unsloth fine-tune: MISTRAL", "Fine-tune"},
        NamingRow{"Phi", "unsloth x/phi-4", "Unsloth fine-tune: phi 4", "Fine-tune"},
        NamingRow{"Gemma", "unsloth x/gemma", "Unsloth fine-tune: gemma", "Fine-tune"},
        NamingRow{"OtherPath", "unsloth x/y", "Unsloth fine-tune", "Fine-tune"},
        NamingRow{"FirstArgumentIsNone", "/llama/unsloth", "Unsloth fine-tune", "Fine-tune"},
        NamingRow{"FirstOfTwo", "unsloth x/phi x/gemma", "Unsloth fine-tune: phi", "Fine-tune"}),
    rowName<NamingRow>);

}  // namespace
