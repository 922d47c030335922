#pragma once

#include <optional>
#include <string_view>

#include "scanner/command_line/invocation.h"

namespace recognition {

/// A program whose arguments are its own options and then another program: sudo, env, uv run.
struct Launcher {
  std::string_view names;
  std::string_view verbs;   ///< one of these comes first, with "|" between them ("" : none)
  std::string_view valued;  ///< its options that take the next word
  std::string_view flags;   ///< "*" in `valued`: all options take the next word, but these
  int operands = 0;         ///< how many words of its own come before the program
  bool waits = false;       ///< it stays until the program ends; else it becomes the program
  bool isDistributed = false;
  bool runsPackage = false;  ///< the next word is a package, perhaps with a version
};

// A new launcher goes here, beside those of its kind.
inline constexpr Launcher kLaunchers[] = {
    // what changes a program's surroundings and becomes it
    {.names = "env", .valued = "-u --unset -C --chdir -S"},
    {.names = "ionice", .valued = "-c --class -n --classdata"},
    {.names = "chrt", .valued = "-T -P -D", .operands = 1},
    {.names = "taskset", .operands = 1},
    {.names = "numactl",
     .valued = "-i --interleave -N --cpunodebind -m --membind -C --physcpubind -p --preferred"},
    {.names = "stdbuf", .valued = "-i -o -e --input --output --error"},
    {.names = "setpriv setsid unbuffer linux64 prime-run optirun gamemoderun catchsegv dumb-init "
              "catatonit mangohud dbus-launch systemd-cat caffeine"},
    {.names = "tini", .valued = "-p -e"},
    {.names = "gosu su-exec setarch s6-setuidgid direnv-exec chroot", .operands = 1},
    {.names = "proxychains proxychains4 tsocks torsocks", .valued = "-f"},
    {.names = "rosetta", .operands = 1},
    {.names = "ld-linux-x86-64.so.2 ld-linux-aarch64.so.1",
     .valued = "--library-path --preload --argv0 --inhibit-rpath"},
    {.names = "opentelemetry-instrument ddtrace-run"},
    {.names = "newrelic-admin", .verbs = "run-program|run-python"},
    // what starts a program and waits for it
    {.names = "sudo",
     .valued = "-u --user -g --group -h --host -p --prompt -C -D --chdir -r --role -t --type -T -U",
     .waits = true},
    {.names = "doas", .valued = "-u -C", .waits = true},
    {.names = "runuser", .valued = "-u --user -g --group", .waits = true},
    {.names = "time", .valued = "-f --format -o --output", .waits = true},
    {.names = "dbus-run-session systemd-inhibit", .waits = true},
    {.names = "systemd-run", .valued = "-u --unit -p --property -M --uid --gid -E", .waits = true},
    {.names = "xvfb-run", .valued = "-n -s -e -f -w -p", .waits = true},
    {.names = "dotenv doppler infisical op chamber",
     .verbs = "run|exec",
     .valued = "*",
     .waits = true},
    {.names = "srun",
     .valued = "-n -N -p -c -t -J -o -e -w -A -G -q -x -D -C --ntasks --nodes --partition "
               "--cpus-per-task --time --job-name --output --error --gpus --gres --mem "
               "--account --qos --nodelist --container-image --container-mounts",
     .waits = true},
    {.names = "mpirun mpiexec orterun prterun horovodrun mpiexec.hydra",
     .valued = "-n -np -c -H -x -wdir -hostfile -machinefile -host --host --np --hostfile "
               "--map-by --bind-to --rank-by -ppn -genv --report-bindings-to",
     .waits = true},
    // environments and packages
    {.names = "uv",
     .verbs = "run|tool run|tool uvx|x",
     .valued = "--with --with-requirements --with-editable --python -p --from --extra --group "
               "--directory --project --env-file --index-url --index --default-index "
               "--extra-index-url --package --only-group --cache-dir",
     .waits = true,
     .runsPackage = true},
    {.names = "uvx",
     .valued = "--with --python -p --from --index-url --index --env-file",
     .waits = true,
     .runsPackage = true},
    {.names = "pipx",
     .verbs = "run",
     .valued = "*",
     .flags = "--no-cache --path --pypackages --verbose -v --quiet -q --editable -e "
              "--system-site-packages --fetch-missing-python",
     .waits = true,
     .runsPackage = true},
    {.names = "poetry pdm rye hatch pixi pipenv",
     .verbs = "run",
     .valued = "-e --environment -p --project -C --directory",
     .waits = true},
    {.names = "conda mamba micromamba",
     .verbs = "run",
     .valued = "-n --name -p --prefix --cwd",
     .waits = true},
    {.names = "npx bunx pnpx", .valued = "-p --package", .waits = true, .runsPackage = true},
    {.names = "npm",
     .verbs = "exec|x",
     .valued = "-p --package",
     .waits = true,
     .runsPackage = true},
    {.names = "pnpm yarn",
     .verbs = "dlx|exec",
     .valued = "-p --package",
     .waits = true,
     .runsPackage = true},
    {.names = "bun", .verbs = "x", .waits = true, .runsPackage = true},
    // what starts a training on several devices
    {.names = "torchrun torch.distributed.run torch.distributed.launch distributed.run",
     .valued = "*",
     .flags = "--standalone --no-python --use-env --run-path --virtual-local-rank -m --module",
     .waits = true,
     .isDistributed = true},
    {.names = "accelerate",
     .verbs = "launch",
     .valued = "*",
     .flags = "--cpu --multi-gpu --tpu --ipex --quiet -q --use-deepspeed --use-fsdp "
              "--use-megatron-lm --use-xpu --no-python --debug -m --module --same-network "
              "--use-parallelism-config --enable-cpu-affinity",
     .waits = true,
     .isDistributed = true},
    {.names = "accelerate.commands.launch",
     .valued = "*",
     .flags = "--cpu --multi-gpu --tpu --quiet -q --use-deepspeed --use-fsdp --debug -m --module",
     .waits = true,
     .isDistributed = true},
    {.names = "deepspeed deepspeed.launcher.launch deepspeed.launcher.runner ds colossalai",
     .valued = "*",
     .flags = "--module --no-python --no-local-rank --no-ssh --no-ssh-check --force-multi "
              "--elastic-training --bind-cores-to-rank",
     .waits = true,
     .isDistributed = true},
    {.names = "composer",
     .valued = "-n --nproc --world-size --base-rank --node-rank",
     .waits = true,
     .isDistributed = true},
    // Python's tools for looking into a program while it runs
    {.names = "debugpy", .valued = "--listen --connect --log-to --pid", .waits = false},
    {.names = "memray scalene viztracer", .verbs = "run"},
};

/// Null: none is called so.
const Launcher* launcherCalled(std::string_view name);

/// What a launcher starts, or becomes.
struct Launched {
  Arguments rest;         ///< begins with it; never empty
  bool isModule = false;  ///< it is a Python module's name
};

/// Of a line that begins with the launcher; none where it launches nothing.
std::optional<Launched> launchedBy(const Launcher& launcher, Arguments line);

}  // namespace recognition
