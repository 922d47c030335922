#include "scanner/family_borders.h"

#include <gtest/gtest.h>

#include <string_view>
#include <vector>

#include "fakes/row_name.h"
#include "text/path.h"

namespace {

struct BorderRow {
  const char* name;
  std::vector<std::string_view> arguments;
  bool isBorder;
};

class FamilyBorder : public testing::TestWithParam<BorderRow> {};

TEST_P(FamilyBorder, IsWhoStartsWorksOfTheirOwn) {
  const auto& arguments = GetParam().arguments;
  EXPECT_EQ(ProcessScanner::isFamilyBorder(text::lastPathComponent(arguments.front()), arguments),
            GetParam().isBorder);
}

const BorderRow kBorderRows[] = {
    {"AShell", {"bash"}, true},
    {"ALoginShell", {"-zsh"}, true},
    {"AShellWithOptions", {"/bin/bash", "--login", "-i"}, true},
    {"AShellOfAnEditor", {"/bin/bash", "--init-file", "/opt/integration.sh"}, true},
    {"AShellWithAnOption", {"bash", "-o", "vi"}, true},
    {"AScript", {"bash", "run.sh", "-i"}, false},
    {"AScriptWithOptions", {"sh", "-e", "./run.sh"}, false},
    {"ACommand", {"bash", "-c", "python train.py"}, false},
    {"ACommandInACluster", {"bash", "-lc", "python train.py"}, false},
    {"AFishCommand", {"fish", "--command", "x"}, false},
    {"SystemdOfAUser", {"/usr/lib/systemd/systemd", "--user"}, true},
    {"Multiplexer", {"tmux: server"}, true},
    {"MultiplexerInCapitals", {"SCREEN", "-S", "x"}, true},
    {"Terminal", {"/usr/bin/konsole"}, true},
    {"TerminalWithAPathInItsTitle", {"/usr/libexec/gnome-terminal-server: x"}, true},
    {"SecureShell", {"sshd: ada@pts/1"}, true},
    {"Editor", {"/usr/share/code/code", "--no-sandbox"}, true},
    {"EditorFromAfar", {"node", "/home/a/.vscode-server/cli/out/server-main.js"}, true},
    {"Node", {"node", "server.js"}, false},
    {"SupervisorInPython", {"python3", "/usr/bin/supervisord"}, true},
    {"Python", {"python3", "train.py"}, false},
    {"Launcher", {"torchrun", "train.py"}, false},
    {"Browser", {"/usr/lib/firefox/firefox"}, false},
    {"Docker", {"dockerd"}, false},
    {"BeginsLikeABorder", {"code2prompt"}, false},
};

INSTANTIATE_TEST_SUITE_P(Table, FamilyBorder, testing::ValuesIn(kBorderRows), rowName<BorderRow>);

}  // namespace
