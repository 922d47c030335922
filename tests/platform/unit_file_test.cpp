#include "platform/linux/unit_file.h"

#include <gtest/gtest.h>

#include "fakes/row_name.h"

namespace {

using namespace std::string_literals;
using Words = std::vector<std::string>;

struct UnitRow {
  const char* name;
  std::string bytes;
  Words command;
  bool keepAlive = false;
};

class ServiceUnitFile : public testing::TestWithParam<UnitRow> {};

TEST_P(ServiceUnitFile, TellsCommandAndRestart) {
  const auto unit = platform::serviceUnit(GetParam().bytes);
  EXPECT_EQ(unit.command, GetParam().command);
  EXPECT_EQ(unit.keepAlive, GetParam().keepAlive);
}

const UnitRow kUnitFileRows[] = {
    {"AnOrdinaryService",
     "[Unit]\nDescription=Ollama\n\n[Service]\nExecStart=/usr/bin/ollama serve\nRestart=always\n"
     "\n[Install]\nWantedBy=default.target\n",
     {"/usr/bin/ollama", "serve"},
     true},
    {"RestartOnFailure", "[Service]\nRestart=on-failure\n", {}, true},
    {"RestartNo", "[Service]\nRestart=no\n", {}, false},
    {"NoRestart", "[Service]\nExecStart=/bin/a\n", {"/bin/a"}, false},
    {"EmptyRestart", "[Service]\nRestart=always\nRestart=\n", {}, false},
    {"TheLastRestartCounts", "[Service]\nRestart=no\nRestart=always\n", {}, true},
    {"TheFirstCommandCounts", "[Service]\nExecStart=/bin/a\nExecStart=/bin/b\n", {"/bin/a"}},
    {"AnEmptyCommandForgetsThoseBefore",
     "[Service]\nExecStart=/bin/a\nExecStart=\nExecStart=/bin/b\n",
     {"/bin/b"}},
    {"OtherCommands", "[Service]\nExecStartPre=/bin/a\nExecStop=/bin/b\n", {}},
    {"OtherSections",
     "[Unit]\nExecStart=/bin/a\nRestart=always\n[X-Service]\nExecStart=/bin/b\n",
     {}},
    {"BeforeAnySection", "ExecStart=/bin/a\nRestart=always\n[Service]\n", {}},
    {"TwoServiceSections",
     "[Service]\nRestart=always\n[Unit]\nA=b\n[Service]\nExecStart=/bin/a\n",
     {"/bin/a"},
     true},
    {"BlanksAroundKeyAndValue",
     "  [Service]  \n\tExecStart \t=  /bin/a  b \nRestart = no \n",
     {"/bin/a", "b"}},
    {"Comments",
     "[Service]\n# ExecStart=/bin/a\n ;Restart=always\nExecStart=/bin/b # c\n",
     {"/bin/b", "#", "c"}},
    {"ContinuedLines",
     "[Service]\nExecStart=/bin/a \\\n  b\\\n  c\nRestart=always\n",
     {"/bin/a", "b", "c"},
     true},
    {"ACommentBetweenContinuedLines",
     "[Service]\nExecStart=/bin/a \\\n# b\n; c\n  d\n",
     {"/bin/a", "d"}},
    {"AContinuedComment", "[Service]\n# a \\\nExecStart=/bin/b\n", {"/bin/b"}},
    {"AnEmptyLineEndsAContinuedOne",
     "[Service]\nExecStart=/bin/a \\\n\nRestart=always\n",
     {"/bin/a"},
     true},
    {"AnEscapedBackslashAtTheEnd",
     "[Service]\nExecStart=/bin/a b\\\\\nRestart=always\n",
     {"/bin/a", "b\\"},
     true},
    {"AContinuedLineAtTheEndOfTheFile", "[Service]\nExecStart=/bin/a \\", {"/bin/a"}},
    {"NoFinalLineFeed", "[Service]\nExecStart=/bin/a", {"/bin/a"}},
    {"CarriageReturns",
     "[Service]\r\nExecStart=/bin/a \\\r\n b\r\nRestart=always\r\n",
     {"/bin/a", "b"},
     true},
    {"AByteOrderMark", "\xef\xbb\xbf[Service]\nExecStart=/bin/a\n", {"/bin/a"}},
    {"AnOpenQuoteIsPassedOver", "[Service]\nExecStart=/bin/a \"b\nExecStart=/bin/c\n", {"/bin/c"}},
    {"ALineThatIsNotUtf8", "[Service]\nExecStart=/bin/a caf\xe9\nExecStart=/bin/b\n", {"/bin/b"}},
    {"TheKeysAreCaseSensitive", "[service]\nExecStart=/bin/a\n[Service]\nexecstart=/bin/b\n", {}},
    {"ASectionThatIsNotClosed", "[Service\nExecStart=/bin/a\n", {}},
    {"NoEqualsSign", "[Service]\nExecStart\nRestart\n", {}},
    {"NulsEndLines", "[Service]\0ExecStart=/bin/a\0"s, {"/bin/a"}},
    {"Empty", "", {}},
    {"Garbage", "\x7f\x45\x4c\x46\x02\x01\x01\0\0[[=]]\\\n\\\n=\n[]\n"s, {}},
    {"AnEqualsSignAlone", "[Service]\n=\n= a\n", {}},
};

INSTANTIATE_TEST_SUITE_P(Table, ServiceUnitFile, testing::ValuesIn(kUnitFileRows),
                         rowName<UnitRow>);

TEST(ServiceUnitFileOfAMebibyte, IsReadToItsEnd) {
  const std::string padding(1 << 20, 'x');
  for (const std::string& filling :
       {"Description=" + padding + "\n", "#" + padding + "\n", padding + "\n",
        "Description=" + std::string(1 << 20, '\\') + "\n"}) {
    EXPECT_EQ(platform::serviceUnit("[Service]\n" + filling + "ExecStart=/bin/a\n").command,
              Words{"/bin/a"});
  }
  EXPECT_TRUE(platform::serviceUnit(std::string(1 << 20, '[')).command.empty());
  EXPECT_EQ(platform::serviceUnit("[Service]\nExecStart=" + padding).command, Words{padding});
}

TEST(ServiceUnitFileOfAMebibyte, MayBeOneContinuedLine) {
  std::string bytes = "[Service]\nExecStart=/bin/a";
  for (int i = 0; i < 100000; ++i) bytes += " \\\n b";
  EXPECT_EQ(platform::serviceUnit(bytes).command.size(), 100001U);
}

}  // namespace
