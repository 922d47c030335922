#include "scanner/command_line/ignored_programs.h"

#include <algorithm>
#include <string>
#include <vector>

#include "scanner/command_line/program_names.h"
#include "text/contains.h"

namespace recognition {
namespace {

// A new program goes to the group of those that do the same kind of thing.
// NOLINTBEGIN(bugprone-suspicious-missing-comma)
// Each group is one long text: there is a comma at its end, and none before that.
constexpr std::string_view kIgnoredPrograms[] = {

    // searching, paging, showing, comparing
    "grep egrep fgrep zgrep rg ripgrep ag ack fzf find fd fdfind locate plocate mlocate updatedb "
    "tail head less more most cat bat tac nl wc sort uniq cut tr awk gawk mawk sed jq yq xxd "
    "hexdump od strings file stat ls eza exa tree diff colordiff cmp delta column lnav multitail "
    "journalctl dmesg logger logrotate man info xdg-open open echo printf test sleep which xargs "
    "parallel basename dirname realpath readlink date dd sha256sum md5sum b3sum",
    // editing
    "vi vim vimdiff view nvim gvim neovide emacs emacsclient nano micro helix hx kak ed joe kate "
    "kwrite gedit gnome-text-editor mousepad code code-insiders code-server codium cursor "
    "windsurf zed zed-editor zeditor subl sublime-text pycharm idea clion webstorm goland rider "
    "jetbrains xed pluma notepadqq typora obsidian lapce fleet okular evince libreoffice soffice",
    // version control
    "git git-remote-https git-remote-http git-lfs git-upload-pack git-receive-pack gh glab hub hg "
    "svn bzr jj tig lazygit gitk git-gui repo dvc pre-commit fossil darcs cvs",
    // package managers, downloads
    "apt apt-get aptitude apt-cache apt-key apt-helper dpkg dpkg-deb dpkg-query dpkg-split "
    "dpkg-preconfigure update-alternatives unattended-upgrade unattended-upgrades "
    "unattended-upgrade-shutdown dnf dnf5 yum rpm rpmbuild microdnf zypper pacman yay paru "
    "makepkg emerge apk xbps-install nix nix-build nix-env nix-daemon guix snap snapd flatpak "
    "brew port pip pip3 pipx-install pip-compile pip-sync conda mamba micromamba conda-build "
    "poetry pdm rye hatch pixi pipenv uv npm pnpm yarn corepack lerna nx turbo bundle gem "
    "composer cargo rustup go ghcup cabal stack mvn mvnw gradle gradlew sbt ivy coursier "
    "packagekitd wget curl aria2c axel yt-dlp huggingface-cli hf softwareupdate installer mas "
    "virtualenv venv ensurepip build twine setup.py easy-install vcpkg conan",
    // compilers and build tools
    "cc c++ gcc g++ cc1 cc1plus cpp collect2 as ld ld.bfd ld.gold ld.lld lld gold mold wild ar "
    "ranlib strip objcopy objdump nm clang clang++ clangd clang-format clang-tidy clang-cpp "
    "clang-scan-deps llc opt lto1 lto-wrapper rustc rustdoc rust-analyzer javac kotlinc scalac "
    "ghc nvcc cicc ptxas fatbinary cudafe++ nvlink hipcc swiftc swift-frontend swift-driver "
    "swift-build swift-build-tool swift-package swift-test sourcekit-lsp sourcekitd "
    "sourcekitservice xcodebuild xcrun actool ibtool xcbbuildservice swbbuildservice "
    "swiftbuildservice libtool lipo dsymutil codesign make gmake ninja samu cmake ctest cpack "
    "ccmake meson bazel bazelisk buck buck2 scons waf autoconf automake autoreconf configure m4 "
    "bison flex ccache sccache distcc distccd icecc iceccd moc uic rcc lupdate lrelease qmake "
    "protoc cython swig tsc esbuild swc webpack vite rollup parcel next nuxt gatsby babel terser "
    "postcss tailwindcss sass py-compile compileall debuild dpkg-buildpackage sbuild pbuilder "
    "lintian fakeroot docker-build kaniko ld-linux ldconfig depmod dkms update-initramfs "
    "mkinitramfs dracut",
    // other machines, copies, archives
    "ssh sshd sshd-session ssh-agent ssh-add autossh mosh mosh-server mosh-client scp sftp "
    "sftp-server rsync rclone restic borg duplicity duplicati rsnapshot tar bsdtar cpio zip unzip "
    "gzip gunzip pigz bzip2 xz zstd 7z 7za rar unrar cp mv rm ln install mkdir chmod chown touch "
    "truncate du df lftp ftp telnet nc ncat socat ngrok cloudflared frpc frps tailscale "
    "tailscaled gcloud gsutil aws az s3cmd s5cmd mc azcopy oci doctl hcloud terraform tofu pulumi "
    "ansible ansible-playbook packer vagrant salt-call puppet chef-client scontrol squeue sbatch "
    "salloc scancel sacct sinfo qsub qstat bsub runpodctl vastai modal sky skypilot lambda mount "
    "umount sshfs nfsd smbd filezilla",
    // sessions
    "tmux screen zellij byobu abduco dtach ttyd gotty login getty agetty su expect xterm kitty "
    "alacritty konsole gnome-terminal gnome-terminal-server ptyxis wezterm wezterm-gui foot "
    "footclient tilix terminator xfce4-terminal ghostty iterm2 terminal warp st urxvt hyper csh "
    "tcsh dash ksh ksh93 mksh ash pwsh powershell nu xonsh elvish busybox",
    // processes: listing, signalling, tracing, watching
    "ps pgrep pkill pidof pidwait kill killall top htop btop atop glances nmon iotop iftop "
    "nethogs bpytop gotop nvtop nvitop nvidia-smi gpustat gpu-stats radeontop rocm-smi amd-smi "
    "intel-gpu-top asitop mactop powermetrics watch lsof fuser strace ltrace dtrace dtruss gdb "
    "lldb rr valgrind heaptrack perf py-spy nsys ncu rocprof nvprof bpftrace sysdig tcpdump "
    "wireshark vmstat iostat mpstat sar pidstat free uptime who w last systemctl systemd-cgls "
    "systemd-cgtop loginctl launchctl service supervisorctl initctl rc-service monit pm2 crontab "
    "at atd cron crond anacron entr inotifywait fswatch watchexec nodemon reflex-watch "
    "tensorboard mlflow-ui wandb wandb-core aim clearml-agent node-exporter process-exporter "
    "dcgm-exporter prometheus grafana grafana-server netdata telegraf collectd zabbix-agentd "
    "zabbix-agent2 datadog-agent vector fluent-bit fluentd filebeat metricbeat promtail otelcol "
    "alloy kdesystemguard gnome-system-monitor plasma-systemmonitor ksysguard resources "
    "missioncenter",
    // clients of containers and clusters
    "docker docker-compose docker-buildx docker-model podman podman-compose nerdctl buildah "
    "skopeo crictl ctr runc crun conmon lxc lxc-attach incus distrobox distrobox-enter toolbox "
    "kubectl k9s helm helmfile kustomize stern oc minikube kind k3d k3s-agent colima orbctl lima "
    "limactl apptainer singularity enroot pyxis dive lazydocker watchtower "
    "containerd-shim-runc-v2 docker-proxy docker-init docker-credential-desktop argocd flux tilt "
    "skaffold telepresence machinectl systemd-nspawn vboxmanage virsh multipass",
    // browsers and desktop applications that open what others wrote
    "firefox firefox-bin firefox-esr chrome google-chrome chromium chromium-browser "
    "chrome-crashpad chrome-crashpad-handler brave brave-browser opera vivaldi vivaldi-bin msedge "
    "microsoft-edge epiphany falkon konqueror safari librewolf zen floorp arc webkitwebprocess "
    "webkitnetworkprocess thunderbird slack discord element-desktop signal-desktop "
    "telegram-desktop vlc mpv spotify nautilus dolphin thunar nemo-desktop caja finder",
    // tests, linters, formatters, language servers, documentation
    "pytest py.test unittest tox nox nose2 coverage hypothesis ctest gtest-parallel jest vitest "
    "mocha ava karma cypress playwright-test tap c8 nyc phpunit rspec junit behave robot locust "
    "k6 ruff black isort flake8 pylint mypy dmypy pyright pyright-langserver basedpyright "
    "basedpyright-langserver pylsp pyls jedi-language-server pytype pyre ty bandit autopep8 yapf "
    "eslint eslint-d prettier prettierd biome stylelint tsserver typescript-language-server gopls "
    "golangci-lint staticcheck shellcheck shfmt hadolint yamllint codespell vale markdownlint "
    "lua-language-server bash-language-server yaml-language-server jdtls omnisharp texlab ltex-ls "
    "cppcheck iwyu sphinx-build sphinx-autobuild mkdocs doxygen pandoc pdflatex xelatex lualatex "
    "latexmk typst lm-eval lm-evaluation-harness evalplus helm-run inspect opencompass "
    "bigcode-eval",
    // queues and schedulers that run others' code by name
    "celery rq dramatiq huey flower airflow dagster dagit luigi prefect make-jobserver",
    // small things of the interpreters
    "http.server json.tool timeit pdb trace cprofile pstats pyflakes pydoc idle idlelib zipapp "
    "simplehttpserver spacy-init",
};
// NOLINTEND(bugprone-suspicious-missing-comma)

/// By name. A hash table of as many would take three times the memory.
const std::vector<std::string_view>& ignoredPrograms() {
  static const auto names = [] {
    std::vector<std::string_view> all;
    for (const std::string_view list : kIgnoredPrograms) {
      const auto some = listed(list);
      all.insert(all.end(), some.begin(), some.end());
    }
    std::ranges::sort(all);
    all.shrink_to_fit();
    return all;
  }();
  return names;
}

}  // namespace

bool isIgnoredProgram(std::string_view name) {
  if (std::ranges::binary_search(ignoredPrograms(), name)) return true;
  // x86_64-linux-gnu-g++, aarch64-apple-darwin-ld
  const auto dash = name.rfind('-');
  if (dash != std::string_view::npos) {
    const std::string_view last = name.substr(dash + 1);
    const bool isTool =
        isListed("gcc g++ c++ cc cpp ld as ar nm strip ranlib objcopy objdump clang clang++", last);
    if (isTool && text::containsAny(name, {"-linux-", "-apple-", "-w64-", "-none-", "-unknown-",
                                           "-elf-", "-eabi-"})) {
      return true;
    }
    if (last == "lsp") return true;
  }
  return name.ends_with("language-server") || name.ends_with("langserver") ||
         name.ends_with("-language-features");
}

}  // namespace recognition
