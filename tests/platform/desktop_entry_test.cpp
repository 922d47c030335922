#include "platform/linux/desktop_entry.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fakes/row_name.h"

namespace {

using platform::DesktopEntry;
using testing::ElementsAre;
using Words = std::vector<std::string>;

TEST(DesktopEntryFile, TellsOfAnApplication) {
  const auto entry = platform::desktopEntry(
      "# a comment\n"
      "[Desktop Entry]\n"
      "Type=Application\n"
      "Name=System Monitor\n"
      "Name[de]=Systemüberwachung\n"
      "Icon = monitor \n"
      "Exec=monitor %U\n"
      "TryExec=monitor\n"
      "Path=/opt/monitor\n"
      "Terminal=true\n"
      "NoDisplay=true\r\n"
      "Categories=GNOME;System;Monitor;\n"
      "OnlyShowIn=GNOME\n"
      "NotShowIn=KDE;XFCE;\n"
      "\n"
      "[Desktop Action New]\n"
      "Name=New window\n"
      "Exec=monitor --new\n");
  ASSERT_TRUE(entry);
  EXPECT_EQ(entry->name, "System Monitor");
  EXPECT_EQ(entry->icon, "monitor");
  EXPECT_EQ(entry->exec, "monitor %U");
  EXPECT_EQ(entry->tryExec, "monitor");
  EXPECT_EQ(entry->folder, "/opt/monitor");
  EXPECT_THAT(entry->categories, ElementsAre("GNOME", "System", "Monitor"));
  EXPECT_THAT(entry->onlyShowIn, ElementsAre("GNOME"));
  EXPECT_THAT(entry->notShowIn, ElementsAre("KDE", "XFCE"));
  EXPECT_TRUE(entry->needsTerminal);
  EXPECT_FALSE(entry->isListed);
  EXPECT_FALSE(entry->isHidden);
}

TEST(DesktopEntryFile, IsListedAndNotHiddenUnlessItSaysSo) {
  const auto plain = platform::desktopEntry("[Desktop Entry]\nType=Application\n");
  ASSERT_TRUE(plain);
  EXPECT_TRUE(plain->isListed);
  EXPECT_FALSE(plain->isHidden);
  EXPECT_FALSE(plain->needsTerminal);
  const auto hidden = platform::desktopEntry("[Desktop Entry]\nType=Application\nHidden=true\n");
  ASSERT_TRUE(hidden);
  EXPECT_TRUE(hidden->isHidden);
}

TEST(DesktopEntryFile, UndoesTheEscapesOfValues) {
  const auto entry = platform::desktopEntry(
      "[Desktop Entry]\nType=Application\nName=\\sa\\tb\\n\\\\c\\q\\\n"
      "Exec=sh -c \"a \\\\\"b\\\\\"\"\nCategories=a\\;b;c\\sd;;e\n");
  ASSERT_TRUE(entry);
  EXPECT_EQ(entry->name, " a\tb\n\\c\\q\\");
  EXPECT_EQ(entry->exec, "sh -c \"a \\\"b\\\"\"");
  EXPECT_THAT(entry->categories, ElementsAre("a;b", "c d", "e"));
}

TEST(DesktopEntryFile, OfSomethingElseIsNone) {
  for (const char* bytes :
       {"", "garbage", "[Desktop Entry]\nType=Link\nURL=x\n", "[Desktop Entry]\nName=x\n",
        "Type=Application\n", "[Other]\nType=Application\n", "[Desktop Entry\nType=Application\n",
        "\x7f\x45\x4c\x46=\n[=]\n\\\n"}) {
    EXPECT_FALSE(platform::desktopEntry(bytes)) << bytes;
  }
}

struct ExecRow {
  const char* name;
  const char* exec;
  std::optional<Words> command;
};

class ExecCommand : public testing::TestWithParam<ExecRow> {};

TEST_P(ExecCommand, IsCutIntoWords) {
  DesktopEntry entry;
  entry.name = "My App";
  entry.icon = "my-icon";
  entry.exec = GetParam().exec;
  EXPECT_EQ(platform::commandOf(entry, "/usr/share/applications/my app.desktop"),
            GetParam().command);
}

const ExecRow kDesktopEntryRows[] = {
    {"PlainWords", "plasma-systemmonitor --page  x", Words{"plasma-systemmonitor", "--page", "x"}},
    {"Quotes", "\"/opt/My App/app\" \"a b\"c", Words{"/opt/My App/app", "a bc"}},
    {"SingleQuotes", "sh -c 'a \"b\" \\ c'", Words{"sh", "-c", "a \"b\" \\ c"}},
    {"EscapesInQuotes", R"(a "\"\`\$\\")", Words{"a", "\"`$\\"}},
    {"AnEscapeOutsideOfQuotes", R"(a b\ c)", Words{"a", "b c"}},
    {"AnEmptyWord", "a \"\" b", Words{"a", "", "b"}},
    {"FilesAndUrls", "a %f %F b %u %U", Words{"a", "b"}},
    {"ACodeInsideAWord", "a --file=%f", Words{"a", "--file="}},
    {"OldCodes", "a %d%D%n%N%v%m b", Words{"a", "b"}},
    {"APercentSign", "a 50%%", Words{"a", "50%"}},
    {"TheName", "a -caption %c", Words{"a", "-caption", "My App"}},
    {"TheIcon", "a %i b", Words{"a", "--icon", "my-icon", "b"}},
    {"TheFile", "a %k", Words{"a", "/usr/share/applications/my app.desktop"}},
    {"APercentSignAtTheEnd", "a b%", Words{"a", "b%"}},
    {"ABackslashAtTheEnd", "a b\\", Words{"a", "b\\"}},
    {"AnOpenQuote", "a \"b", std::nullopt},
    {"Nothing", "", std::nullopt},
    {"CodesOnly", "%U", std::nullopt},
    {"ShellOperatorsAreWords", "a; b | c > d & $E",
     Words{"a;", "b", "|", "c", ">", "d", "&", "$E"}},
};

INSTANTIATE_TEST_SUITE_P(Table, ExecCommand, testing::ValuesIn(kDesktopEntryRows),
                         rowName<ExecRow>);

TEST(ExecCommandWithoutAnIcon, DropsItsCode) {
  DesktopEntry entry;
  entry.exec = "a %i b";
  EXPECT_EQ(platform::commandOf(entry, ""), (Words{"a", "b"}));
}

}  // namespace
