#include "scanner/naming/naming_row.h"
#include "tools/joined.h"

namespace {

using ProcessScanner::friendlyName;

class CommandName : public testing::TestWithParam<NamingRow> {};

TEST_P(CommandName, IsThatOfTheFirstTestThatFires) {
  expectName(words(GetParam().command), GetParam().displayName, GetParam().product);
}

INSTANTIATE_TEST_SUITE_P(
    LlamaServer, CommandName,
    testing::Values(
        NamingRow{"ModelAndPort",
                  "/opt/homebrew/bin/llama-server -m /models/Meta-Llama-3-8B.Q4_K_M.gguf --port "
                  "8081",
                  "LM Studio: Meta Llama 3 8B.Q4 K M  (:8081)", "LM Studio"},
        NamingRow{"NoModel", "llama-server", "LM Studio: LLM", "LM Studio"},
        NamingRow{"EmptyModelIsAValue", "llama-server --model=", "LM Studio: Unknown model",
                  "LM Studio"},
        NamingRow{"EmptyPortIsAValue", "llama-server --port=", "LM Studio: LLM  (:)", "LM Studio"},
        NamingRow{"EarliestModelOption", "llama-server -m a --model b", "LM Studio: a",
                  "LM Studio"},
        NamingRow{"NotServedModelName", "llama-server --served-model-name a", "LM Studio: LLM",
                  "LM Studio"},
        NamingRow{"InTheLine", "x /LLAMA-SERVER/y", "LM Studio: LLM", "LM Studio"},
        NamingRow{"BeforeMlx", "llama-server mlx serve b", "LM Studio: LLM", "LM Studio"}),
    rowName<NamingRow>);

INSTANTIATE_TEST_SUITE_P(
    MlxServer, CommandName,
    testing::Values(
        NamingRow{"Module",
                  "python -m mlx_lm.server --model mlx-community/Qwen2.5-7B-Instruct-4bit",
                  "MLX Server: Qwen2.5 7B Instruct 4bit", "MLX"},
        NamingRow{"NoModel", "mlx_lm serve --port 9000", "MLX Server: MLX model  (:9000)", "MLX"},
        NamingRow{"ModuleWithPortAlone", "python -m mlx_lm.server --port 1",
                  "MLX Server: MLX model  (:1)", "MLX"},
        NamingRow{"ServedModel", "rapid-mlx serve org/Llama-3_8B --port 1",
                  "MLX Server: Llama 3 8B  (:1)", "MLX"},
        NamingRow{"RunModel", "rapid-mlx run a", "MLX Server: a", "MLX"},
        NamingRow{"ServeBeforeOption", "rapid-mlx serve --model a", "MLX Server: a", "MLX"},
        NamingRow{"ServeLast", "rapid-mlx --model a serve", "MLX Server: a", "MLX"},
        NamingRow{"SecondServe", "rapid-mlx serve --x run b", "MLX Server: b", "MLX"},
        NamingRow{"ServedModelBeforeOption", "rapid-mlx --model a serve b", "MLX Server: b", "MLX"},
        NamingRow{"ServeInCapitalsIsNoCommand", "rapid-mlx SERVE b", "MLX Server: MLX model",
                  "MLX"},
        NamingRow{"ServeFirst", "serve mlx", "MLX Server: mlx", "MLX"},
        NamingRow{"ServedModelName", "mlx_lm.server --served-model-name a", "MLX Server: a", "MLX"},
        NamingRow{"MlxWithoutServe", "mlx_lm chat", "mlx_lm", "Process"}),
    rowName<NamingRow>);

INSTANTIATE_TEST_SUITE_P(
    ModelOptionsBehindPythonsModule, CommandName,
    testing::Values(
        NamingRow{"InCapitals", "/x/Python3.12 -m mlx_lm.server -m a", "MLX Server: a", "MLX"},
        NamingRow{"AfterInterpretersOptions", "python -u -W x -X y -B -m mlx_lm.server -m a",
                  "MLX Server: a", "MLX"},
        NamingRow{"WarningIsModuleLike", "python -W -m -m mlx.server -m a", "MLX Server: a", "MLX"},
        NamingRow{"WarningInOneWord", "python -Wx -m mlx.server", "MLX Server: MLX model", "MLX"},
        NamingRow{"AfterAScript", "python mlx_server.py -m a", "MLX Server: a", "MLX"},
        NamingRow{"AfterAScriptAndAModule", "python x -m mlx.server --model a",
                  "MLX Server: mlx.server", "MLX"},
        NamingRow{"OptionsBeforeModuleAreTheInterpreters", "python --model=a -m mlx.server",
                  "MLX Server: MLX model", "MLX"},
        NamingRow{"AfterCode", "python -c x -m mlx.server", "MLX Server: mlx.server", "MLX"},
        NamingRow{"ModuleInOneWord", "python -mmlx.server --model a", "MLX Server: a", "MLX"},
        NamingRow{"ModuleOptionLast", "python --model=mlx.server -m", "MLX Server: MLX model",
                  "MLX"},
        NamingRow{"WarningOptionLast", "python --model=mlx.server -W", "MLX Server: mlx.server",
                  "MLX"},
        NamingRow{"OtherExecutable", "xpython -m mlx.server", "MLX Server: mlx.server", "MLX"},
        NamingRow{"PortsAreNotSkipped", "python -m --port=2 mlx serve",
                  "MLX Server: MLX model  (:2)", "MLX"},
        NamingRow{"LlamaServer", "python -m llama-server -m a", "LM Studio: a", "LM Studio"},
        NamingRow{"LlamaServerWithoutModel", "python -m llama-server", "LM Studio: LLM",
                  "LM Studio"},
        NamingRow{"Training", "python -m finetune -m a", "Fine-tune: a", "Fine-tune"},
        NamingRow{"TrainingWithoutModel", "python -m finetune", "Fine-tune", "Fine-tune"}),
    rowName<NamingRow>);

INSTANTIATE_TEST_SUITE_P(
    KnownTools, CommandName,
    testing::Values(
        NamingRow{"HermesFolder", "/home/a/.hermes/x", "Hermes", "Hermes"},
        NamingRow{"HermesCli", "x -m hermes_cli", "Hermes", "Hermes"},
        NamingRow{"HermesExe", "/bin/hermes", "Hermes", "Hermes"},
        NamingRow{"HermesInCapitals", "/bin/Hermes", "Hermes", "Process"},
        NamingRow{"HermesGateway", "hermes agent gateway", "Hermes Gateway", "Hermes"},
        NamingRow{"HermesAgent", "hermes AGENT", "Hermes Agent", "Hermes"},
        NamingRow{"OllamaServe", "ollama serve", "Ollama Server", "Ollama"},
        NamingRow{"OllamaInABundle", "/Applications/Ollama.app/Contents/Resources/ollama runner",
                  "Ollama", "Ollama"},
        NamingRow{"OllamaFolder", "/opt/ollama-x/y", "Ollama", "Ollama"},
        NamingRow{"BrevikFolder", "/home/a/.brevik/x", "Brevik", "Brevik"},
        NamingRow{"BrevikDashboard", "brevik dashboard", "Brevik Dashboard", "Brevik"},
        NamingRow{"Brevik", "brevik", "Brevik", "Brevik"},
        NamingRow{"ZenthoMcp", "x zentho.mcp", "Zentho MCP Server", "Zentho"},
        NamingRow{"ZenthoModule", "x -m zentho", "Zentho", "Zentho"},
        NamingRow{"ZenthoModuleWithMcp", "x -m zentho_mcp", "Zentho MCP Server", "Zentho"},
        NamingRow{"ZenthoAlone", "zentho", "zentho", "Process"},
        NamingRow{"OllamaBeforeTraining", "python /ollama/train.py", "Ollama", "Ollama"}),
    rowName<NamingRow>);

INSTANTIATE_TEST_SUITE_P(
    KnownHelpers, CommandName,
    testing::Values(NamingRow{"DockerNetworkHelper", "/usr/local/bin/com.docker.vmnetd",
                              "Docker network helper (root)", "Docker"},
                    NamingRow{"DockerBackend", "/x/com.docker.backend run",
                              "Docker Desktop backend", "Docker"},
                    NamingRow{"DockerOther", "com.docker.build", "Docker Desktop", "Docker"},
                    NamingRow{"Containermanagerd", "/usr/libexec/containermanagerd --x",
                              "Apple containermanagerd", "System"},
                    NamingRow{"BeforeBundles", "/Applications/A.app/x com.docker.x",
                              "Docker Desktop", "Docker"},
                    NamingRow{"AfterTraining", "python train.py com.docker.x", "Training: train.py",
                              "Training"}),
    rowName<NamingRow>);

TEST(BundleName, IsThatOfTheOutermostBundle) {
  struct FriendlyNamingRow {
    std::vector<std::string> arguments;
    const char* displayName;
    const char* product;
  };
  const FriendlyNamingRow rows[] = {
      // "/Docker.app/" is looked for in the lowered line, where it is never found.
      {{"/Applications/Docker.app/Contents/MacOS/Docker Desktop"}, "Docker", "App"},
      {{"/Applications/Foo.app/Contents/MacOS/Foo"}, "Foo", "App"},
      {{"/A/Foo Bar.app/x"}, "Foo Bar", "App"},
      {{"/A/Out.app/B/In.app/x"}, "Out", "App"},
      {{"x", "/A/Second.app/x"}, "Second", "App"},
      {{"/A/First.app/x", "/A/Second.app/x"}, "First", "App"},
      {{"/A/Foo.app.app/x"}, "Foo", "App"},
      {{"/A/Foo.application.app/x"}, "Foolication", "App"},
      {{"/A/.app.app/x"}, "", "App"},
      {{"/A/.ap.appp.app/x"}, ".app", "App"},
      {{"/A/.app/x"}, "x", "Process"},
      {{"/A/Foo.app"}, "Foo.app", "Process"},
      {{"Foo.app/x"}, "x", "Process"},
      {{"/A/Foo.APP/x"}, "x", "Process"},
      {{"/A/Foo.apps/x"}, "x", "Process"},
      {{"x=/A/Foo.app/"}, "Foo", "App"},
      {{"//Foo.app//"}, "Foo", "App"},
      {{"/A/Foo\n.app/x"}, "Foo\n", "App"},
      {{"python", "-m", "x", "/A/Foo.app/x"}, "Foo", "App"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(joined(row.arguments));
    expectName(row.arguments, row.displayName, row.product);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Python, CommandName,
    testing::Values(NamingRow{"Module", "python3 -m vllm.entrypoints.openai.api_server",
                              "Python: vllm.entrypoints.openai.api_server", "Python"},
                    NamingRow{"ModulePathIsKept", "python -m a/b", "Python: a/b", "Python"},
                    NamingRow{"Script", "python3 -u /x/y/app.py a.py", "Python: app.py", "Python"},
                    NamingRow{"ScriptInCapitals", "python /x/APP.PY", "python", "Process"},
                    NamingRow{"ModuleBeforeScript", "python app.py -m x", "Python: x", "Python"},
                    NamingRow{"ModuleOptionLast", "python app.py -m", "Python: app.py", "Python"},
                    NamingRow{"FirstModuleOptionOnly", "python -m -m x", "Python: -m", "Python"},
                    NamingRow{"InterpretersOptionsDoNotHideIt", "python -W -m x", "Python: x",
                              "Python"},
                    NamingRow{"ExeItselfIsNoScript", "python.py", "python.py", "Process"},
                    NamingRow{"Nothing", "/usr/bin/python3.12 -u", "python3.12", "Process"},
                    NamingRow{"ExeInCapitals", "Python app.py", "Python", "Process"},
                    NamingRow{"InferenceIsNoRow", "python -m mlx_lm generate --model m",
                              "Python: mlx_lm", "Python"},
                    NamingRow{"AdapterServer", "python server.py --adapter lora_weights",
                              "Python: server.py", "Python"}),
    rowName<NamingRow>);

INSTANTIATE_TEST_SUITE_P(
    Otherwise, CommandName,
    testing::Values(NamingRow{"Wrapper", "bash -c python train.py", "bash", "Process"},
                    NamingRow{"Exe", "/usr/bin/Vim x", "Vim", "Process"},
                    NamingRow{"TrailingSlashes", "/usr/bin/vim// x", "vim", "Process"},
                    NamingRow{"Slashes", "//", "/", "Process"},
                    NamingRow{"EmptyExe", " x", "fallback", "Process"},
                    NamingRow{"EmptyArgument", "", "fallback", "Process"}),
    rowName<NamingRow>);

TEST(FriendlyName, OfNoArgumentsIsTheFallback) {
  const auto shown = friendlyName({}, "launchd");
  EXPECT_EQ(shown.displayName, "launchd");
  EXPECT_EQ(shown.product, "Process");
}

}  // namespace
