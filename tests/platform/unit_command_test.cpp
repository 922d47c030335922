#include "platform/linux/unit_command.h"

#include <gtest/gtest.h>

#include "fakes/row_name.h"

namespace {

using Words = std::vector<std::string>;

struct CommandRow {
  const char* name;
  const char* value;
  std::optional<Words> words;
};

class CommandWords : public testing::TestWithParam<CommandRow> {};

TEST_P(CommandWords, AreCutAsSystemdDoes) {
  EXPECT_EQ(platform::commandWords(GetParam().value), GetParam().words);
}

const CommandRow kUnitCommandRows[] = {
    {"PlainWords", "/usr/bin/ollama serve --port 1",
     Words{"/usr/bin/ollama", "serve", "--port", "1"}},
    {"RunsOfBlanks", " \t/bin/a \t b  ", Words{"/bin/a", "b"}},
    {"Nothing", "", Words{}},
    {"BlanksOnly", " \t ", Words{}},
    {"DoubleQuotes", "\"/opt/My App/app\" \"a b\"", Words{"/opt/My App/app", "a b"}},
    {"SingleQuotes", "/bin/sh -c 'echo \"hi\" there'", Words{"/bin/sh", "-c", "echo \"hi\" there"}},
    {"QuotesInsideAWord", "/bin/a --name=\"a b\"c", Words{"/bin/a", "--name=a bc"}},
    {"AnEmptyWord", "/bin/a \"\" b", Words{"/bin/a", "", "b"}},
    {"AnOpenQuote", "/bin/a \"b c", std::nullopt},
    {"AnOpenSingleQuote", "/bin/a 'b", std::nullopt},
    {"SimpleEscapes", R"(/bin/a a\sb \t\n\\ \"\')", Words{"/bin/a", "a b", "\t\n\\", "\"'"}},
    {"EscapesInQuotes", R"(/bin/a "a\"b" 'a\'b')", Words{"/bin/a", "a\"b", "a'b"}},
    {"HexadecimalEscape", R"(/bin/a \x41\x2d)", Words{"/bin/a", "A-"}},
    {"OctalEscape", R"(/bin/a \101\060)", Words{"/bin/a", "A0"}},
    {"UnicodeEscapes", R"(/bin/a \u00e9 \U0001F600)", Words{"/bin/a", "é", "😀"}},
    {"BytesOfOneCharacter", R"(/bin/a \xc3\xa9)", Words{"/bin/a", "é"}},
    {"AnEscapeThatIsNone", R"(/bin/a \q \xg1 \u12 \U00110000 \9)",
     Words{"/bin/a", "\\q", "\\xg1", "\\u12", "\\U00110000", "\\9"}},
    {"AnEscapedNul", R"(/bin/a \x00 \000)", Words{"/bin/a", "\\x00", "\\000"}},
    {"AnOctalEscapeAboveAByte", R"(/bin/a \777)", Words{"/bin/a", "\\777"}},
    {"ABackslashAtTheEnd", R"(/bin/a b\)", Words{"/bin/a", "b\\"}},
    {"AWordThatIsNotUtf8", R"(/bin/a \xff b)", Words{"/bin/a", "b"}},
    {"EveryPrefix", "-@:+!/bin/a -@b", Words{"/bin/a", "-@b"}},
    {"TwoExclamationMarks", "!!/bin/a", Words{"/bin/a"}},
    {"APrefixInQuotes", "\"-/bin/a b\"", Words{"/bin/a b"}},
    {"APrefixAlone", "- /bin/a", Words{"/bin/a"}},
    {"SeveralCommands", "/bin/a b ; /bin/c d", Words{"/bin/a", "b"}},
    {"ASemicolonAtTheEnd", "/bin/a ;", Words{"/bin/a"}},
    {"AnEscapedSemicolon", R"(/bin/a \; b)", Words{"/bin/a", ";", "b"}},
    {"ASemicolonInsideAWord", "/bin/a b;c ;d", Words{"/bin/a", "b;c", ";d"}},
    {"SpecifiersAndVariables", "%h/bin/a $HOME ${X} %%", Words{"%h/bin/a", "$HOME", "${X}", "%%"}},
};

INSTANTIATE_TEST_SUITE_P(Table, CommandWords, testing::ValuesIn(kUnitCommandRows),
                         rowName<CommandRow>);

}  // namespace
