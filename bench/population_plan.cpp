#include "population_plan.h"

#include <array>
#include <string_view>

namespace bench {
namespace {

/// Whether a scan lists a process, and why.
enum class Listing { passedOver, large, aiWork };

/// A kind of process. In `line`, "%" stands for a number that differs from one process to the
/// next, and blanks part the arguments.
struct Kind {
  int share;  ///< of a thousand processes
  const char* executable;
  bool rewritten;
  int owner;
  int memoryKiB;
  int threads;
  Listing listing;
  std::string_view line;
};

constexpr bool kRewritten = true;
constexpr bool kAsStarted = false;
constexpr Listing kLarge = Listing::large;
constexpr Listing kAiWork = Listing::aiWork;
constexpr Listing kPassedOver = Listing::passedOver;

constexpr auto kKinds = std::to_array<Kind>({
    // A browser and desktop applications built on one: helpers that rewrite their lines.
    {150, "chrome", kRewritten, 0, 768, 14, kPassedOver,
     "/opt/google/chrome/chrome --type=renderer --crashpad-handler-pid=% --enable-crash-reporter="
     "4f9a5e0b-77c2-4d1c-9a51-a1f4b2c6%, --change-stack-guard-on-fork=enable --lang=en-US "
     "--num-raster-threads=4 --enable-main-frame-before-activation --renderer-client-id=% "
     "--time-ticks-at-unix-epoch=-1753012345678901 --launch-time-ticks=% "
     "--shared-files=v8_context_snapshot_data:100 --metrics-shmem-handle=4,i,%,%,2097152 "
     "--field-trial-handle=3,i,%,%,262144 --variations-seed-version=20260301-130019.% "
     "--trace-process-track-uuid=%"},
    {20, "chrome", kRewritten, 0, 512, 8, kPassedOver,
     "/opt/google/chrome/chrome --type=utility --utility-sub-type=network.mojom.NetworkService "
     "--lang=en-US --service-sandbox-type=none --crashpad-handler-pid=% --enable-crash-reporter="
     "4f9a5e0b-77c2-4d1c-9a51-a1f4b2c6%, --change-stack-guard-on-fork=enable "
     "--shared-files=v8_context_snapshot_data:100 --field-trial-handle=3,i,%,%,262144"},
    {50, "code", kRewritten, 0, 768, 14, kPassedOver,
     "/usr/share/code/code --type=renderer --crashpad-handler-pid=% --enable-crash-reporter="
     "f2b0c1aa-90de-4fd7-8d71-0f7b9d1e%,no_channel --user-data-dir=/home/ada/.config/Code "
     "--standard-schemes=vscode-webview,vscode-file --secure-schemes=vscode-webview,vscode-file "
     "--cors-schemes=vscode-webview,vscode-file --fetch-schemes=vscode-webview,vscode-file "
     "--service-worker-schemes=vscode-webview --app-path=/usr/share/code/resources/app "
     "--enable-sandbox --enable-blink-features=HighlightAPI --lang=en-US "
     "--num-raster-threads=4 --renderer-client-id=% --launch-time-ticks=% "
     "--field-trial-handle=3,i,%,%,262144 --vscode-window-config=vscode:%-1b2d"},
    {10, "chrome", kAsStarted, 0, 65536, 28, kLarge,
     "/opt/google/chrome/chrome --profile-directory=Profile% --no-default-browser-check "
     "--restore-last-session --enable-features=UseOzonePlatform --ozone-platform=wayland"},
    // Editors and what they start.
    {70, "node", kAsStarted, 0, 512, 11, kPassedOver,
     "/usr/share/code/code /home/ada/.vscode/extensions/language-tools-%/dist/main.js "
     "--node-ipc --clientProcessId=% --max-old-space-size=3072 --cancellationReceive=file:"
     "1d3f5a%-2b5e --locale en --logDirectory /home/ada/.config/Code/logs/window%"},
    {20, "nvim", kAsStarted, 0, 384, 1, kPassedOver,
     "/usr/bin/nvim --embed --headless --cmd set\\ shortmess+=I -u /home/ada/.config/nvim/init.lua "
     "/home/ada/src/project%/src/main/resources/templates/page%.html"},
    {30, "java", kAsStarted, 0, 1024, 32, kPassedOver,
     "/usr/lib/jvm/java-21-openjdk-amd64/bin/java --add-opens=java.base/java.util=ALL-UNNAMED "
     "--add-opens=java.base/java.lang=ALL-UNNAMED --add-opens=java.base/java.nio=ALL-UNNAMED "
     "-XX:MaxMetaspaceSize=384m -XX:+HeapDumpOnOutOfMemoryError -Xms256m -Xmx512m "
     "-Dfile.encoding=UTF-8 -Duser.country=GB -Duser.language=en -Duser.variant -cp "
     "/home/ada/.gradle/wrapper/dists/gradle-8.%-bin/lib/gradle-daemon-main-8.%.jar "
     "-javaagent:/home/ada/.gradle/wrapper/dists/gradle-8.%-bin/lib/agents/"
     "gradle-instrumentation-agent-8.%.jar org.gradle.launcher.daemon.bootstrap.GradleDaemon "
     "8.%"},
    // What a build runs.
    {50, "cc1plus", kAsStarted, 0, 512, 1, kPassedOver,
     "/usr/lib/gcc/x86_64-linux-gnu/12/cc1plus -quiet -I /home/ada/src/engine/include "
     "-I /home/ada/src/engine/build/generated -I /home/ada/src/engine/third_party/fmt/include "
     "-imultiarch x86_64-linux-gnu -D_GNU_SOURCE -DNDEBUG -DENGINE_SHARD=% "
     "/home/ada/src/engine/core/unit%.cpp -quiet -dumpdir core/ -dumpbase unit%.cpp "
     "-dumpbase-ext .cpp -mtune=generic -march=x86-64 -g -O2 -Wall -Wextra -std=gnu++20 "
     "-fasynchronous-unwind-tables -o /tmp/cc%.s"},
    {50, "bash", kAsStarted, 0, 256, 1, kPassedOver,
     "/bin/bash -c cd /home/ada/src/engine/build && exec ninja -j 8 -k 0 "
     "-l 12 all check-format check-headers docs shard-% 2>&1 | tee /tmp/build-%.log"},
    // The desktop's and the machine's daemons.
    {150, "gvfsd-fuse", kAsStarted, 0, 256, 3, kPassedOver,
     "/usr/libexec/gvfsd-trash --spawner :1.% /org/gtk/gvfs/exec_spaw/% --address "
     "unix:path=/run/user/1000/bus,guid=0d7a5b4e9c3f%"},
    {120, "systemd", kAsStarted, 1, 256, 1, kPassedOver,
     "/usr/lib/systemd/systemd-helper --unit=session-%.scope --property=TasksMax=33% "
     "--slice=user.slice --collect --uid=1000 --description=Session-%"},
    {30, "dbus-daemon", kAsStarted, 2, 256, 1, kPassedOver,
     "/usr/bin/dbus-daemon --session --address=systemd: --nofork --nopidfile "
     "--systemd-activation --syslog-only --print-pid=%"},
    {20, "sshd", kRewritten, 1, 256, 1, kPassedOver,
     "sshd: /usr/sbin/sshd -D -o AuthorizedKeysCommand=/usr/bin/keys -o "
     "AuthorizedKeysCommandUser=nobody [listener] % of 10-100 startups pts/%"},
    // Servers.
    {60, "postgres", kRewritten, 3, 512, 1, kPassedOver,
     "postgres: 15/main: app_owner orders_production 10.20.0.%(5%) idle in transaction "
     "(aborted) waiting for lock on relation % of database %"},
    {40, "nginx", kRewritten, 4, 256, 1, kPassedOver,
     "nginx: worker process -g daemon on; master_process on; -c /etc/nginx/sites/site%.conf "
     "-p /var/lib/nginx/instances/%"},
    {30, "python3", kAsStarted, 4, 768, 1, kPassedOver,
     "/srv/shop/venv/bin/python3 /srv/shop/venv/bin/gunicorn shop.wsgi:application --workers 8 "
     "--bind unix:/run/shop/worker%.sock --access-logfile - --timeout 30"},
    {30, "containerd-shim", kAsStarted, 1, 384, 11, kPassedOver,
     "/usr/bin/containerd-shim-runc-v2 -namespace moby -id 9c0e4a7f5d2b4c81a6e3f1d07b9a8c5e6d4f3b"
     "2a1908f7e6d5c4b3a2%-% -address /run/containerd/containerd.sock"},
    {30, "docker-proxy", kAsStarted, 1, 256, 8, kPassedOver,
     "/usr/bin/docker-proxy -proto tcp -port-ip 0.0.0.0 -port 8% -container-ip 172.17.0.% "
     "-container-port 80% -use-listen-fd"},
    // AI workloads.
    {6, "python3", kAsStarted, 0, 1024, 40, kAiWork,
     "/home/ada/venv/bin/python3 -m vllm.entrypoints.openai.api_server --model "
     "meta-llama/Llama-3-8B-Instruct --served-model-name llama-% --port 8% --api-key sk-% "
     "--tensor-parallel-size 2 --gpu-memory-utilization 0.92 --max-model-len 8192"},
    {6, "llama-server", kAsStarted, 5, 1024, 18, kAiWork,
     "/usr/local/bin/llama-server -m /models/Meta-Llama-3-8B-Instruct.Q4_K_M.gguf --host 0.0.0.0 "
     "--port 8% --ctx-size 8192 --n-gpu-layers 99 --threads 8"},
    {4, "ollama", kAsStarted, 0, 1024, 18, kAiWork,
     "/usr/local/bin/ollama runner --model /usr/share/ollama/.ollama/models/blobs/sha256-6a0746a1%"
     " --ctx-size 8192 --batch-size 512 --n-gpu-layers 33 --threads 8 --parallel 4 --port 4%"},
    {8, "python3", kAsStarted, 0, 1024, 36, kAiWork,
     "/home/ada/venv/bin/python3 /home/ada/venv/bin/torchrun --nproc_per_node=8 --master_port=2% "
     "train_lora.py --model_name_or_path meta-llama/Llama-2-7b-hf --lora_rank 16 --lora_alpha 32 "
     "--num_train_epochs 3 --output_dir /data/runs/run-% --hf-token hf_% --deepspeed zero3.json"},
    {6, "python3", kAsStarted, 5, 1024, 24, kAiWork,
     "/home/grace/venv/bin/python3 finetune.py --base-model mistralai/Mistral-7B-v0.3 --seed % "
     "--gradient_accumulation_steps 8 --learning-rate 2e-4 --output /data/grace/run-%"},
    {6, "node", kAsStarted, 0, 512, 11, kAiWork,
     "/usr/bin/node /home/ada/.npm/_npx/1e2d%/node_modules/.bin/mcp-server-filesystem --stdio "
     "/home/ada/src /home/ada/notes --log-level info"},
    {4, "python3", kAsStarted, 0, 768, 14, kAiWork,
     "/home/ada/venv/bin/python3 -m jupyter_server.extension.serverextension --port=88% "
     "--ServerApp.token=9f0b% --no-browser --notebook-dir=/home/ada/notebooks"},
});

/// A sequence of numbers that look arbitrary and are the same in every run.
class Numbers {
 public:
  std::string next() {
    state_ = state_ * 6364136223846793005U + 1442695040888963407U;
    return std::to_string(100 + (state_ >> 33U) % 900);
  }

 private:
  std::uint64_t state_ = 1;
};

IdleProcess make(const Kind& kind, Numbers& numbers) {
  IdleProcess process{.executable = kind.executable,
                      .arguments = {""},
                      .rewritten = kind.rewritten,
                      .owner = kind.owner,
                      .memoryKiB = kind.memoryKiB,
                      .threads = kind.threads};
  for (const char c : kind.line) {
    if (c == ' ') {
      process.arguments.emplace_back();
    } else if (c == '%') {
      process.arguments.back() += numbers.next();
    } else {
      process.arguments.back() += c;
    }
  }
  return process;
}

}  // namespace

std::vector<IdleProcess> planPopulation(std::size_t count, Mix mix) {
  std::vector<const Kind*> kinds;
  int all = 0;
  for (const auto& kind : kKinds) {
    if (kind.listing != Listing::passedOver && mix == Mix::ordinary) continue;
    if (kind.listing != Listing::aiWork && mix == Mix::aiWork) continue;
    kinds.push_back(&kind);
    all += kind.share;
  }

  // Each next process is of the kind that is furthest behind its share: any beginning of the
  // population is mixed like the whole.
  std::vector<IdleProcess> population;
  std::vector<double> made(kinds.size(), 0);
  Numbers numbers;
  for (std::size_t i = 0; i < count; ++i) {
    std::size_t furthest = 0;
    double largest = -1;
    for (std::size_t k = 0; k < kinds.size(); ++k) {
      const double due = static_cast<double>(i + 1) * kinds[k]->share / all - made[k];
      if (due > largest) {
        largest = due;
        furthest = k;
      }
    }
    ++made[furthest];
    population.push_back(make(*kinds[furthest], numbers));
  }
  return population;
}

std::vector<IdleProcess> planAwakePopulation(std::size_t count, int wakesMs) {
  constexpr std::size_t kPart = 4;
  std::vector<IdleProcess> population = planPopulation(count, Mix::machine);
  for (std::size_t i = 0; i < population.size(); i += kPart) population[i].wakesMs = wakesMs;
  return population;
}

IdleProcess planTraining() {
  return {.executable = "python3",
          .arguments = {"/home/ada/venv/bin/python3", "train_lora.py", "--model_name_or_path",
                        "meta-llama/Llama-2-7b-hf", "--lora_rank", "16"},
          .memoryKiB = 1024,
          .copies = 12};
}

std::vector<IdleProcess> planCommandLines(std::size_t count, std::size_t length) {
  constexpr std::string_view kArgument = "--include=/home/ada/src/engine/generated/messages/part";
  std::vector<IdleProcess> population;
  Numbers numbers;
  for (std::size_t i = 0; i < count; ++i) {
    IdleProcess process{.executable = "java", .arguments = {"/usr/bin/java"}, .memoryKiB = 64};
    std::size_t written = process.arguments.front().size();
    while (written < length) {
      process.arguments.push_back(std::string(kArgument) + numbers.next());
      written += process.arguments.back().size() + 1;
    }
    population.push_back(std::move(process));
  }
  return population;
}

}  // namespace bench
