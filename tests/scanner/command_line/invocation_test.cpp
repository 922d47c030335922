#include "scanner/command_line/invocation.h"

#include <gtest/gtest.h>

#include <ostream>

#include "fakes/row_name.h"
#include "scanner/process_scanner.h"
#include "tools/joined.h"

namespace {

/// Whom a command line is about: "program/package/module/script", what is empty left out, and then
/// what it was given.
struct InvocationRow {
  const char* name;
  std::vector<std::string_view> arguments;
  std::string who;
  std::string given;
};

std::ostream& operator<<(std::ostream& out, const InvocationRow& row) {
  return out << row.name;
}

class Unwrapping : public testing::TestWithParam<InvocationRow> {};

TEST_P(Unwrapping, FindsWhoRuns) {
  const auto invocation = recognition::invocationOf(GetParam().arguments);
  std::vector<std::string> parts;
  for (const std::string& part :
       {invocation.program, invocation.package, invocation.module, invocation.script}) {
    if (!part.empty()) parts.push_back(part);
  }
  EXPECT_EQ(joined(parts, " | "), GetParam().who);
  EXPECT_EQ(joined(invocation.arguments), GetParam().given);
}

using Row = InvocationRow;
INSTANTIATE_TEST_SUITE_P(
    All, Unwrapping,
    testing::Values(
        Row{"Program", {"/usr/bin/vllm", "serve", "m"}, "vllm", "serve m"},
        Row{"ConsoleScript", {"/v/bin/python3.11", "/v/bin/vllm", "serve"}, "vllm", "serve"},
        Row{"Module",
            {"python", "-u", "-m", "vllm.entrypoints.openai.api_server", "--port", "1"},
            "vllm | vllm.entrypoints.openai.api-server",
            "--port 1"},
        Row{"ModuleInOneWord", {"python3", "-mpytest", "-x"}, "pytest | pytest", "-x"},
        Row{"Script",
            {"python", "-X", "dev", "a/train.py", "--lr", "1"},
            "python | train.py",
            "--lr 1"},
        Row{"InstalledScript",
            {"python", "/v/lib/python3.12/site-packages/swift/cli/sft.py", "-x"},
            "swift | swift.cli.sft | sft.py",
            "-x"},
        Row{"Code", {"python", "-c", "import x"}, "python", "-c import x"},
        Row{"InterpreterAlone", {"python3"}, "python", ""},
        Row{"NodePackage",
            {"node", "/usr/lib/node_modules/@openai/codex/bin/codex.js", "exec"},
            "codex | @openai/codex | codex.js",
            "exec"},
        Row{"NodeLink",
            {"node", "./node_modules/.bin/../gitnexus/dist/cli.js", "mcp"},
            "gitnexus | gitnexus | cli.js",
            "mcp"},
        Row{"NodeProgram",
            {"node", "--max-old-space-size=4096", "/usr/local/bin/gemini", "-y"},
            "gemini",
            "-y"},
        Row{"Npx",
            {"npx", "-y", "@playwright/mcp@latest", "--headless"},
            "mcp | @playwright/mcp",
            "--headless"},
        Row{"NpmTitle",
            {"npm exec @upstash/context7-mcp"},
            "context7-mcp | @upstash/context7-mcp",
            ""},
        Row{"NpmTitleOfAnInstallation", {"npm install -g x"}, "npm", "install -g x"},
        Row{"TitleInOnePiece", {"/opt/google/chrome/chrome --type=gpu"}, "chrome", "--type=gpu"},
        Row{"BlankInAPath", {"/opt/git repos/vllm", "serve"}, "vllm", "serve"},
        Row{"BlankInAPathAlone", {"/opt/git repos/vllm"}, "vllm", ""},
        Row{"NpmCliScript",
            {"node", "/usr/lib/node_modules/npm/bin/npm-cli.js", "exec", "mcp-x"},
            "mcp-x | mcp-x",
            ""},
        Row{"Bunx", {"bunx", "some-mcp@1.2"}, "some-mcp | some-mcp", ""},
        Row{"Deno", {"deno", "run", "-A", "npm:@a/b@1", "x"}, "b | @a/b", "x"},
        Row{"UvRun", {"uv", "run", "--with", "x", "vllm", "serve"}, "vllm | vllm", "serve"},
        Row{"UvRunModule", {"uv", "run", "python", "-m", "a.b"}, "a | a.b", ""},
        Row{"Uvx",
            {"uvx", "mcp-server-git==1.0", "--repository", "."},
            "mcp-server-git | mcp-server-git",
            "--repository ."},
        Row{"PipxRun",
            {"pipx", "run", "--quiet", "--python", "3.12", "open-webui", "serve"},
            "open-webui | open-webui",
            "serve"},
        Row{"UvRunScript", {"uv", "run", "a/train.py", "-x"}, "python | train.py", "-x"},
        Row{"NpxScript", {"npx", "tsx", "src/mcp/index.ts"}, "node | index.ts", ""},
        Row{"ScriptBehindALauncher", {"srun", "./train.py"}, "python | train.py", ""},
        Row{"InstalledScriptOfTorchrun",
            {"torchrun", "/v/site-packages/llamafactory/launcher.py", "q.yaml"},
            "llamafactory | llamafactory.launcher | launcher.py",
            "q.yaml"},
        Row{"UvInstalls", {"uv", "pip", "install", "vllm"}, "uv", "pip install vllm"},
        Row{"CondaRun", {"conda", "run", "-n", "e", "vllm", "serve"}, "vllm", "serve"},
        Row{"Sudo", {"sudo", "-u", "ollama", "A=1", "/usr/bin/ollama", "serve"}, "ollama", "serve"},
        Row{"EnvIoniceNumactl",
            {"env", "A=b", "ionice", "-c", "3", "numactl", "-N", "0", "vllm", "serve"},
            "vllm",
            "serve"},
        Row{"Taskset", {"taskset", "-c", "0-3", "vllm"}, "vllm", ""},
        Row{"Chrt", {"chrt", "-r", "50", "vllm"}, "vllm", ""},
        Row{"Srun",
            {"srun", "-N", "2", "--gres=gpu:8", "python", "train.py"},
            "python | train.py",
            ""},
        Row{"Torchrun",
            {"torchrun", "--nproc_per_node", "8", "train.py", "--lr", "1"},
            "python | train.py",
            "--lr 1"},
        Row{"TorchrunModule",
            {"torchrun", "--standalone", "-m", "pkg.train", "x"},
            "pkg | pkg.train",
            "x"},
        Row{"AccelerateFlags",
            {"accelerate", "launch", "--multi_gpu", "t.py"},
            "python | t.py",
            ""},
        Row{"Deepspeed",
            {"deepspeed", "--module", "openrlhf.cli.train_sft", "--a"},
            "openrlhf | openrlhf.cli.train-sft",
            "--a"},
        Row{"DistributedInOneWord",
            {"python", "-mtorch.distributed.run", "--nnodes=1", "/a/rnn.py"},
            "python | rnn.py",
            ""},
        Row{"Java",
            {"java", "-cp", "a", "-Xmx1g", "org.pytorch.serve.ModelServer", "-x"},
            "java | org.pytorch.serve.modelserver",
            "-x"},
        Row{"Jar", {"java", "-jar", "/opt/app-1.2.jar", "x"}, "app", "x"},
        Row{"HostedApplication",
            {"uvicorn", "open_webui.main:app", "--port", "1"},
            "uvicorn | open-webui.main",
            "open_webui.main:app --port 1"},
        Row{"HostedApplicationOfAFile",
            {"gunicorn", "--bind", "127.0.0.1:80", "tts_server:app"},
            "gunicorn | tts-server",
            "--bind 127.0.0.1:80 tts_server:app"},
        Row{"CalledAfterItsVersion",
            {"/h/.local/share/claude/versions/2.0.14", "-p", "x"},
            "claude",
            "-p x"},
        Row{"WithItsMachine",
            {"./koboldcpp-linux-x64-cuda1210", "--x"},
            "koboldcpp-linux-x64-cuda1210",
            "--x"},
        Row{"WithItsMachineAlone", {"./koboldcpp-linux-x64"}, "koboldcpp", ""},
        Row{"DaemonsTitle", {"nginx: worker process"}, "nginx", ""},
        Row{"EngineTitle", {"VLLM::EngineCore"}, "vllm", ""},
        Row{"WrapperIsNotLookedInto", {"sudo", "nohup", "vllm", "serve"}, "nohup", "vllm serve"},
        Row{"LauncherAlone", {"sudo"}, "sudo", ""}, Row{"Nobody", {}, "", ""}),
    rowName<Row>);

TEST(UnwrappingWithoutEnd, Stops) {
  std::vector<std::string_view> arguments(20000, "sudo");
  EXPECT_EQ(recognition::invocationOf(arguments).program, "sudo");
  arguments.assign(20000, "python");
  EXPECT_EQ(recognition::invocationOf(arguments).program, "python");
}

}  // namespace
