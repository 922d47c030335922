// What the real vorda-tray asks of the kernel, and never asks of it.
#include <gmock/gmock.h>

#include "frontends/qt/desktop/tray_test.h"
#include "tools/scoped_variable.h"
#include "tools/system_call_trace.h"
#include "tools/temp_folder.h"

namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;

class TrayLeastPower : public TrayTest {};

TEST_F(TrayLeastPower, IsEnough) {
  if (const std::string reason = SystemCallTrace::reason(); !reason.empty()) {
    GTEST_SKIP() << reason;
  }
  // Every session has such a folder. Where there is none Qt makes one.
  const TempFolder folder;
  std::filesystem::permissions(folder.path(), std::filesystem::perms::owner_all);
  const ScopedVariable runtime("XDG_RUNTIME_DIR", folder.path().c_str());
  const SystemCallTrace trace(VORDA_TRAY_PROGRAM);
  desktop.setProgram(trace.program());
  startInTray();
  choose("Refresh now");
  choose("Quit Vorda");
  EXPECT_EQ(program->wait(), 0);
  EXPECT_THAT(trace.calls(), Contains(HasSubstr("cmdline")));
  EXPECT_THAT(trace.beyondLeastPower(), IsEmpty());
}

}  // namespace
