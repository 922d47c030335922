#include "platform/macos/launch_agent_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "fakes/row_name.h"
#include "macos/stage_test.h"

namespace {

using namespace std::string_literals;
using Texts = std::vector<std::string>;

struct LaunchAgentFileRow {
  std::string name;
  std::string bytes;
  std::optional<platform::LaunchAgentFile> expected;  // without its path
};

class LaunchAgentFile : public StageTestWith<LaunchAgentFileRow> {};

std::string pathOf(const std::string& name) {
  return Stage::userLaunchAgentsPath() + "/" + name;
}

std::string xml(const std::string& dictionary) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
         "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
         "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
         "<plist version=\"1.0\">" +
         dictionary + "</plist>\n";
}

std::string dict(const std::string& entries) {
  return xml("<dict>" + entries + "</dict>");
}

std::string keepAlive(const std::string& value) {
  return dict("<key>Label</key><string>com.a</string><key>KeepAlive</key>" + value);
}

platform::LaunchAgentFile launchAgent(std::string label, Texts arguments = {},
                                      bool isKeptAlive = false) {
  return {.label = std::move(label),
          .programArguments = std::move(arguments),
          .keepAlive = isKeptAlive};
}

TEST_P(LaunchAgentFile, IsRead) {
  const std::string path = pathOf("com.file.name.plist");
  Stage::write(path, GetParam().bytes);
  const auto read = platform::readLaunchAgentFile(path);
  ASSERT_EQ(read.has_value(), GetParam().expected.has_value());
  if (!read) return;
  EXPECT_EQ(read->path, path);
  EXPECT_EQ(read->label, GetParam().expected->label);
  EXPECT_EQ(read->programArguments, GetParam().expected->programArguments);
  EXPECT_EQ(read->keepAlive, GetParam().expected->keepAlive);
}

// Written by another program than the one that reads them here.
const std::string kBinary =
    "bplist00\324\001\002\003\004\005\006\007\005YKeepAliveULabel_\020\020ProgramArgu"
    "mentsYRunAtLoad\011_\020\020com.ollama.serve\242\010\011_\020\030/opt/homebrew/b"
    "in/ollamaUserve\010\021\033!4>\077RUp\000\000\000\000\000\000\001\001\000\000"
    "\000\000\000\000\000\012\000\000\000\000\000\000\000\000\000\000\000\000\000\000"
    "\000v"s;

// The label is UTF-16, KeepAlive an empty dictionary, an argument a number.
const std::string kBinaryOddTypes =
    "bplist00\323\001\002\003\004\005\006YKeepAliveULabel_\020\020ProgramArguments"
    "\320e\000c\000o\000m\000.\000\351\242\007\010Qa\020\001\010\017\031\03723>AC\000"
    "\000\000\000\000\000\001\001\000\000\000\000\000\000\000\011\000\000\000\000\000"
    "\000\000\000\000\000\000\000\000\000\000E"s;

// KeepAlive is the number 1.
const std::string kBinaryNumber =
    "bplist00\322\001\002\003\004YKeepAliveULabel\020\001Zcom.number\010\015\027\035"
    "\037\000\000\000\000\000\000\001\001\000\000\000\000\000\000\000\005\000\000\000"
    "\000\000\000\000\000\000\000\000\000\000\000\000*"s;
const Texts kOllamaServe{"/opt/homebrew/bin/ollama", "serve"};

INSTANTIATE_TEST_SUITE_P(
    Encodings, LaunchAgentFile,
    testing::Values(
        LaunchAgentFileRow{
            "Xml",
            dict("<key>Label</key><string>com.ollama.serve</string>"
                 "<key>ProgramArguments</key><array><string>/opt/homebrew/bin/ollama</string>"
                 "<string>serve</string></array><key>KeepAlive</key><true/>"),
            launchAgent("com.ollama.serve", kOllamaServe, true)},
        LaunchAgentFileRow{"XmlWithEntitiesAndUnicode",
                           dict("<key>Label</key><string>a&amp;b é 日本</string>"),
                           launchAgent("a&b é 日本")},
        LaunchAgentFileRow{"Binary", kBinary, launchAgent("com.ollama.serve", kOllamaServe, true)},
        LaunchAgentFileRow{"BinaryOddTypes", kBinaryOddTypes, launchAgent("com.é", {}, true)},
        LaunchAgentFileRow{"BinaryNumber", kBinaryNumber, launchAgent("com.number")},
        LaunchAgentFileRow{"EmptyDictionary", dict(""), launchAgent("com.file.name")},
        LaunchAgentFileRow{"Array", xml("<array><string>a</string></array>"), std::nullopt},
        LaunchAgentFileRow{"String", xml("<string>a</string>"), std::nullopt},
        LaunchAgentFileRow{"CutXml", dict("<key>Label</key><string>a</string>").substr(0, 200),
                           std::nullopt},
        LaunchAgentFileRow{"CutBinary", kBinary.substr(0, kBinary.size() / 2), std::nullopt},
        LaunchAgentFileRow{"BinaryWithWildOffsets", "bplist00"s + std::string(40, '\xff'),
                           std::nullopt},
        LaunchAgentFileRow{"Garbage", "\x01\x02 not a property list \xff"s, std::nullopt},
        LaunchAgentFileRow{"Empty", "", std::nullopt}),
    rowName<LaunchAgentFileRow>);

INSTANTIATE_TEST_SUITE_P(
    Types, LaunchAgentFile,
    testing::Values(
        LaunchAgentFileRow{"LabelOfAnotherType", dict("<key>Label</key><integer>7</integer>"),
                           launchAgent("com.file.name")},
        LaunchAgentFileRow{"LabelEmpty", dict("<key>Label</key><string></string>"),
                           launchAgent("")},
        LaunchAgentFileRow{"ProgramIsNotRead",
                           dict("<key>Program</key><string>/bin/ollama</string>"),
                           launchAgent("com.file.name")},
        LaunchAgentFileRow{"ArgumentsOfAnotherType",
                           dict("<key>ProgramArguments</key><string>ollama serve</string>"),
                           launchAgent("com.file.name")},
        LaunchAgentFileRow{
            "OneArgumentOfAnotherType",
            dict("<key>ProgramArguments</key><array><string>a</string><integer>1</integer>"
                 "</array>"),
            launchAgent("com.file.name")},
        LaunchAgentFileRow{"NoArguments", dict("<key>ProgramArguments</key><array/>"),
                           launchAgent("com.file.name")},
        LaunchAgentFileRow{"KeptAlive", keepAlive("<true/>"), launchAgent("com.a", {}, true)},
        LaunchAgentFileRow{"NotKeptAlive", keepAlive("<false/>"), launchAgent("com.a")},
        LaunchAgentFileRow{"KeptAliveOnConditions",
                           keepAlive("<dict><key>SuccessfulExit</key><false/></dict>"),
                           launchAgent("com.a", {}, true)},
        LaunchAgentFileRow{"KeptAliveOnNoConditions", keepAlive("<dict/>"),
                           launchAgent("com.a", {}, true)},
        LaunchAgentFileRow{"TheNumber0", keepAlive("<integer>0</integer>"), launchAgent("com.a")},
        LaunchAgentFileRow{"TheNumber1", keepAlive("<integer>1</integer>"), launchAgent("com.a")},
        LaunchAgentFileRow{"TheNumber1AsReal", keepAlive("<real>1</real>"), launchAgent("com.a")},
        LaunchAgentFileRow{"TheWordTrue", keepAlive("<string>true</string>"), launchAgent("com.a")},
        LaunchAgentFileRow{"AnArray", keepAlive("<array><true/></array>"), launchAgent("com.a")}),
    rowName<LaunchAgentFileRow>);

class LaunchAgentFileOnDisk : public StageTest {};

TEST_F(LaunchAgentFileOnDisk, LabelIsTheNameLessItsExtension) {
  const std::string path = pathOf("com.example.agent.plist");
  Stage::write(path, dict(""));
  EXPECT_EQ(platform::readLaunchAgentFile(path).value().label, "com.example.agent");
}

TEST_F(LaunchAgentFileOnDisk, LinkIsFollowed) {
  Stage::write(Stage::homePath() + "/elsewhere", dict("<key>Label</key><string>com.a</string>"));
  std::filesystem::create_symlink(Stage::homePath() + "/elsewhere", pathOf("a.plist"));
  EXPECT_EQ(platform::readLaunchAgentFile(pathOf("a.plist")).value().label, "com.a");
}

TEST_F(LaunchAgentFileOnDisk, WhatIsNoFileIsSkipped) {
  std::filesystem::create_directory(pathOf("folder.plist"));
  std::filesystem::create_symlink("/nowhere", pathOf("broken.plist"));
  std::filesystem::create_symlink("loop.plist", pathOf("loop.plist"));
  ASSERT_EQ(mkfifo(pathOf("pipe.plist").c_str(), 0600), 0);
  for (const char* name : {"folder", "broken", "loop", "pipe", "missing"}) {
    EXPECT_FALSE(platform::readLaunchAgentFile(pathOf(name + ".plist"s))) << name;
  }
}

TEST_F(LaunchAgentFileOnDisk, HugeFileIsSkipped) {
  const std::string path = pathOf("huge.plist");
  Stage::write(path, dict("<key>Label</key><string>com.huge</string>"));
  ASSERT_TRUE(platform::readLaunchAgentFile(path));
  std::filesystem::resize_file(path, 50 << 20);
  EXPECT_FALSE(platform::readLaunchAgentFile(path));
}

}  // namespace
