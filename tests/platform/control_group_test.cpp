#include "platform/linux/control_group.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include "fakes/row_name.h"
#include "platform/process_place.h"

namespace {

struct ControlGroupRow {
  const char* name;
  std::string cgroup;
  std::string place;
};

class ControlGroup : public testing::TestWithParam<ControlGroupRow> {};

TEST_P(ControlGroup, SaysWhereAProcessBelongs) {
  EXPECT_EQ(platform::placeInControlGroups(GetParam().cgroup), GetParam().place);
}

const std::string kId = "3f2a9c12d4e5aabbccddeeff00112233445566778899aabbccddeeff00112233";

INSTANTIATE_TEST_SUITE_P(
    Table, ControlGroup,
    testing::Values(
        ControlGroupRow{"Service", "0::/system.slice/ollama.service\n", "Unit: ollama.service"},
        ControlGroupRow{"UsersService",
                        "0::/user.slice/user-1000.slice/user@1000.service/app.slice/a:b.service",
                        "Unit: a:b.service"},
        ControlGroupRow{"Session", "0::/user.slice/user-1000.slice/session-2.scope",
                        "Unit: session-2.scope"},
        ControlGroupRow{"BelowAService", "0::/system.slice/x.service/worker/1", "Unit: x.service"},
        ControlGroupRow{"Docker", "0::/system.slice/docker-" + kId + ".scope",
                        "Container: docker 3f2a9c12d4e5"},
        ControlGroupRow{"DockerInAFolder", "0::/docker/" + kId, "Container: docker 3f2a9c12d4e5"},
        ControlGroupRow{"WithinAContainer",
                        "0::/system.slice/docker-" + kId + ".scope/init.service",
                        "Container: docker 3f2a9c12d4e5"},
        ControlGroupRow{"Podman", "0::/machine.slice/libpod-" + kId + ".scope/container",
                        "Container: libpod 3f2a9c12d4e5"},
        ControlGroupRow{"Kubernetes",
                        "0::/kubepods.slice/kubepods-pod1.slice/cri-containerd-" + kId + ".scope",
                        "Container: cri-containerd 3f2a9c12d4e5"},
        ControlGroupRow{"OldHierarchies",
                        "12:memory:/m.service\n1:name=systemd:/system.slice/cron.service\n0::/\n",
                        "Unit: cron.service"},
        ControlGroupRow{"CouldBePasted", "0::/system.slice/$(reboot).service", ""},
        ControlGroupRow{"CouldBePastedBelow", "0::/a.service/b;reboot.service", "Unit: a.service"},
        ControlGroupRow{"SteersTheTerminal", "0::/x\033[2J.service", ""},
        ControlGroupRow{"Escaped", "0::/system.slice/a\\x2db.service", ""},
        ControlGroupRow{"WithoutAnEnd", "0::/" + std::string(10'000, 'a') + ".service", ""},
        ControlGroupRow{"Root", "0::/\n", ""}, ControlGroupRow{"NoPath", "nonsense", ""},
        ControlGroupRow{"Empty", "", ""}),
    rowName<ControlGroupRow>);

TEST(PlaceOfProcess, OfNobodyIsUnknown) {
  EXPECT_EQ(platform::placeOfProcess(-1), "");
}

TEST(WorkingFolderOfProcess, IsWhereItIsNow) {
  EXPECT_EQ(platform::workingFolderOfProcess(getpid()), std::filesystem::current_path().string());
}

TEST(WorkingFolderOfProcess, OfNobodyIsUnknown) {
  EXPECT_EQ(platform::workingFolderOfProcess(-1), std::nullopt);
}

}  // namespace
