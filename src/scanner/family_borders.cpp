#include "scanner/family_borders.h"

#include <algorithm>
#include <cstddef>
#include <functional>

#include "text/path.h"
#include "text/unicode.h"

namespace ProcessScanner {
namespace {

constexpr std::string_view kShells[] = {"ash",  "bash", "csh",  "dash", "elvish", "fish",  "ksh",
                                        "mksh", "nu",   "pwsh", "sh",   "tcsh",   "xonsh", "zsh"};

/// Ascending.
constexpr std::string_view kBorders[] = {
    // service managers, sessions, what containers and jobs begin with
    "anacron", "at-spi-bus-launcher", "atd", "cinnamon-session", "conmon", "containerd-shim",
    "containerd-shim-runc-v2", "cron", "crond", "dbus-broker", "dbus-broker-launch", "dbus-daemon",
    "docker-init", "dumb-init", "dwm", "gdm-wayland-session", "gdm-x-session", "gdm3",
    "gnome-session-binary", "gnome-session-i", "gnome-session-service", "gnome-shell", "hyprland",
    "i3", "init", "kdeinit5", "kglobalaccel5", "kglobalacceld", "krunner", "ksmserver",
    "kwin_wayland", "kwin_x11", "launchd", "lightdm", "login", "loginwindow", "lxsession",
    "mate-session", "openbox", "plasma_session", "plasmashell", "runsv", "runsvdir", "s6-supervise",
    "s6-svscan", "sddm", "sddm-helper", "slurmstepd", "sshd", "sshd-auth", "sshd-session",
    "startplasma-wayland", "startplasma-x11", "supervisord", "sway", "systemd", "tini",
    "xdg-desktop-portal", "xfce4-panel", "xfce4-session", "xinit",
    // terminals and multiplexers
    "abduco", "alacritty", "byobu", "deepin-terminal", "dtach", "foot", "footclient", "ghostty",
    "gnome-terminal-server", "guake", "iterm2", "iterm2-main", "itermserver", "kgx", "kitty",
    "konsole", "lxterminal", "mate-terminal", "mosh-server", "ptyxis", "ptyxis-agent", "qterminal",
    "rxvt", "screen", "st", "terminal", "terminator", "tilix", "tmux", "ttyd", "urxvt", "urxvtd",
    "warp", "warp-terminal", "wezterm-gui", "wezterm-mux-server", "xfce4-terminal", "xterm",
    "yakuake", "zellij",
    // IDEs
    "clion", "clion64", "code", "code-insiders", "code-oss", "code-server", "codium", "cursor",
    "datagrip", "emacs", "emacs-gtk", "emacs-nox", "goland", "idea", "idea64", "kate", "kdevelop",
    "phpstorm", "pycharm", "pycharm64", "qtcreator", "rider", "rustrover", "studio", "studio64",
    "sublime_text", "vscodium", "webstorm", "windsurf", "xcode", "zed", "zed-editor"};

/// "-zsh", "tmux: server" and "sshd: ada@pts/1" begin with a name; "SCREEN" is one in capitals.
std::string nameIn(std::string_view word) {
  if (word.starts_with('-')) word.remove_prefix(1);
  return text::lowered(word.substr(0, word.find_first_of(": ")));
}

bool isBorderName(std::string_view name) {
  return std::ranges::find(kBorders, name) != std::end(kBorders);
}

/// Of a shell's options, those that are followed by a value.
bool takesValue(std::string_view option) {
  constexpr std::string_view kOptions[] = {
      "--rcfile", "--init-file", "--init-command", "-C", "-o", "+o", "-O", "+O"};
  return std::ranges::find(kOptions, option) != std::end(kOptions);
}

/// Whether a shell with these arguments (its own name first) reads what somebody types.
bool isInteractive(std::span<const std::string_view> arguments) {
  for (std::size_t i = 1; i < arguments.size(); ++i) {
    const std::string_view argument = arguments[i];
    const bool isOption = argument.size() > 1 && (argument[0] == '-' || argument[0] == '+');
    if (!isOption) return false;  // a script
    if (argument == "--command" || argument == "--commands") return false;
    const bool isCluster = argument[0] == '-' && argument[1] != '-';
    if (isCluster && argument.find('c') != std::string_view::npos) return false;
    if (takesValue(argument)) ++i;
  }
  return true;
}

/// The part of an editor that runs on the machine that it edits on.
bool isRemoteEditor(std::string_view argument) {
  return argument.find("/.vscode-server/") != std::string_view::npos ||
         argument.find("/.cursor-server/") != std::string_view::npos;
}

}  // namespace

bool isFamilyBorder(std::string_view name, std::span<const std::string_view> arguments) {
  const std::string own = nameIn(name);
  if (std::ranges::find(kShells, own) != std::end(kShells)) return isInteractive(arguments);
  if (isBorderName(own)) return true;
  // A title may hold a path behind the name.
  if (!arguments.empty()) {
    const std::string_view word = arguments[0].substr(0, arguments[0].find_first_of(": "));
    if (isBorderName(nameIn(text::lastPathComponent(word)))) return true;
  }
  if (arguments.size() < 2) return false;
  // What an interpreter runs.
  if (own == "node") return isRemoteEditor(arguments[1]);
  return own.starts_with("python") && isBorderName(nameIn(text::lastPathComponent(arguments[1])));
}

}  // namespace ProcessScanner
