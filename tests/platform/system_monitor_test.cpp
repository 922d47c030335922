#include "platform/linux/system_monitor.h"

#include <gtest/gtest.h>

#include "fakes/row_name.h"

namespace {

using Names = std::vector<std::string>;

/// One application by the lines of its file.
struct MonitorRow {
  const char* name;
  const char* desktop;
  std::vector<std::pair<const char*, const char*>> applications;  ///< id, lines
  Names monitors;
};

class SystemMonitors : public testing::TestWithParam<MonitorRow> {};

TEST_P(SystemMonitors, AreFoundInTheirOrder) {
  std::vector<platform::InstalledApplication> applications;
  for (const auto& [id, lines] : GetParam().applications) {
    const auto entry =
        platform::desktopEntry("[Desktop Entry]\nType=Application\n" + std::string(lines));
    ASSERT_TRUE(entry);
    applications.push_back({id, id, *entry});
  }
  Names ids;
  for (const auto& monitor :
       platform::systemMonitors(applications, platform::desktopNames(GetParam().desktop))) {
    ids.push_back(monitor.id);
  }
  EXPECT_EQ(ids, GetParam().monitors);
}

const MonitorRow kSystemMonitorRows[] = {
    {"NeedsBothCategories",
     "",
     {{"a", "Categories=System;"},
      {"b", "Categories=Monitor;"},
      {"c", "Categories=Qt;Monitor;System"},
      {"d", "Categories=SystemMonitor;"},
      {"e", ""}},
     {"c"}},
    {"KeepsTheOrder",
     "",
     {{"b", "Categories=System;Monitor"}, {"a", "Categories=Monitor;System"}},
     {"b", "a"}},
    {"TheDesktopsOwnByItsCategoryFirst",
     "ubuntu:GNOME",
     {{"a", "Categories=System;Monitor;"},
      {"b", "Categories=KDE;System;Monitor;"},
      {"c", "Categories=GNOME;System;Monitor;"},
      {"d", "Categories=System;Monitor;"}},
     {"c", "a", "b", "d"}},
    {"TheDesktopsOwnByWhereItIsShownFirst",
     "XFCE",
     {{"a", "Categories=System;Monitor;"},
      {"b", "Categories=System;Monitor;\nOnlyShowIn=MATE;XFCE;"}},
     {"b", "a"}},
    {"NotThoseOfOtherDesktops",
     "KDE",
     {{"a", "Categories=System;Monitor;\nOnlyShowIn=GNOME;"},
      {"b", "Categories=System;Monitor;\nNotShowIn=KDE;"},
      {"c", "Categories=System;Monitor;"}},
     {"c"}},
    {"NoDesktop",
     "",
     {{"a", "Categories=System;Monitor;\nOnlyShowIn=GNOME;"},
      {"b", "Categories=System;Monitor;\nNotShowIn=KDE;"}},
     {"b"}},
    {"NotWhatIsNotListed", "", {{"a", "Categories=System;Monitor;\nNoDisplay=true"}}, {}},
};

INSTANTIATE_TEST_SUITE_P(Table, SystemMonitors, testing::ValuesIn(kSystemMonitorRows),
                         rowName<MonitorRow>);

TEST(DesktopNames, AreCutAtColons) {
  EXPECT_EQ(platform::desktopNames(""), Names{});
  EXPECT_EQ(platform::desktopNames("KDE"), Names{"KDE"});
  EXPECT_EQ(platform::desktopNames("ubuntu:GNOME"), (Names{"ubuntu", "GNOME"}));
  EXPECT_EQ(platform::desktopNames(":a::b:"), (Names{"a", "b"}));
}

}  // namespace
