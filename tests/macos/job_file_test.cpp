#include "platform/macos/job_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "fakes/row_name.h"
#include "macos/stage_test.h"

namespace {

using namespace std::string_literals;
using Texts = std::vector<std::string>;

struct Row {
  std::string name;
  std::string bytes;
  std::optional<platform::JobFile> job;  // without its path
};

class JobFile : public StageTestWith<Row> {};

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

platform::JobFile job(std::string label, Texts arguments = {}, bool isKeptAlive = false) {
  return {.label = std::move(label),
          .programArguments = std::move(arguments),
          .keepAlive = isKeptAlive};
}

TEST_P(JobFile, IsRead) {
  const std::string path = pathOf("com.file.name.plist");
  Stage::write(path, GetParam().bytes);
  const auto read = platform::readJobFile(path);
  ASSERT_EQ(read.has_value(), GetParam().job.has_value());
  if (!read) return;
  EXPECT_EQ(read->path, path);
  EXPECT_EQ(read->label, GetParam().job->label);
  EXPECT_EQ(read->programArguments, GetParam().job->programArguments);
  EXPECT_EQ(read->keepAlive, GetParam().job->keepAlive);
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
const Texts kOllama{"/opt/homebrew/bin/ollama", "serve"};

INSTANTIATE_TEST_SUITE_P(
    Encodings, JobFile,
    testing::Values(
        Row{"Xml",
            dict("<key>Label</key><string>com.ollama.serve</string>"
                 "<key>ProgramArguments</key><array><string>/opt/homebrew/bin/ollama</string>"
                 "<string>serve</string></array><key>KeepAlive</key><true/>"),
            job("com.ollama.serve", kOllama, true)},
        Row{"XmlWithEntitiesAndUnicode", dict("<key>Label</key><string>a&amp;b é 日本</string>"),
            job("a&b é 日本")},
        Row{"Binary", kBinary, job("com.ollama.serve", kOllama, true)},
        Row{"BinaryOddTypes", kBinaryOddTypes, job("com.é", {}, true)},
        Row{"BinaryNumber", kBinaryNumber, job("com.number")},
        Row{"EmptyDictionary", dict(""), job("com.file.name")},
        Row{"Array", xml("<array><string>a</string></array>"), std::nullopt},
        Row{"String", xml("<string>a</string>"), std::nullopt},
        Row{"CutXml", dict("<key>Label</key><string>a</string>").substr(0, 200), std::nullopt},
        Row{"CutBinary", kBinary.substr(0, kBinary.size() / 2), std::nullopt},
        Row{"BinaryWithWildOffsets", "bplist00"s + std::string(40, '\xff'), std::nullopt},
        Row{"Garbage", "\x01\x02 not a property list \xff"s, std::nullopt},
        Row{"Empty", "", std::nullopt}),
    rowName<Row>);

INSTANTIATE_TEST_SUITE_P(
    Types, JobFile,
    testing::Values(
        Row{"LabelOfAnotherType", dict("<key>Label</key><integer>7</integer>"),
            job("com.file.name")},
        Row{"LabelEmpty", dict("<key>Label</key><string></string>"), job("")},
        Row{"ProgramIsNotRead", dict("<key>Program</key><string>/bin/ollama</string>"),
            job("com.file.name")},
        Row{"ArgumentsOfAnotherType",
            dict("<key>ProgramArguments</key><string>ollama serve</string>"), job("com.file.name")},
        Row{"OneArgumentOfAnotherType",
            dict("<key>ProgramArguments</key><array><string>a</string><integer>1</integer>"
                 "</array>"),
            job("com.file.name")},
        Row{"NoArguments", dict("<key>ProgramArguments</key><array/>"), job("com.file.name")},
        Row{"KeptAlive", keepAlive("<true/>"), job("com.a", {}, true)},
        Row{"NotKeptAlive", keepAlive("<false/>"), job("com.a")},
        Row{"KeptAliveOnConditions", keepAlive("<dict><key>SuccessfulExit</key><false/></dict>"),
            job("com.a", {}, true)},
        Row{"KeptAliveOnNoConditions", keepAlive("<dict/>"), job("com.a", {}, true)},
        Row{"TheNumber0", keepAlive("<integer>0</integer>"), job("com.a")},
        Row{"TheNumber1", keepAlive("<integer>1</integer>"), job("com.a")},
        Row{"TheNumber1AsReal", keepAlive("<real>1</real>"), job("com.a")},
        Row{"TheWordTrue", keepAlive("<string>true</string>"), job("com.a")},
        Row{"AnArray", keepAlive("<array><true/></array>"), job("com.a")}),
    rowName<Row>);

class JobFileOnDisk : public StageTest {};

TEST_F(JobFileOnDisk, LabelIsTheNameLessItsExtension) {
  const std::string path = pathOf("com.example.agent.plist");
  Stage::write(path, dict(""));
  EXPECT_EQ(platform::readJobFile(path)->label, "com.example.agent");
}

TEST_F(JobFileOnDisk, LinkIsFollowed) {
  Stage::write(Stage::homePath() + "/elsewhere", dict("<key>Label</key><string>com.a</string>"));
  std::filesystem::create_symlink(Stage::homePath() + "/elsewhere", pathOf("a.plist"));
  EXPECT_EQ(platform::readJobFile(pathOf("a.plist"))->label, "com.a");
}

TEST_F(JobFileOnDisk, WhatIsNoFileIsSkipped) {
  std::filesystem::create_directory(pathOf("folder.plist"));
  std::filesystem::create_symlink("/nowhere", pathOf("broken.plist"));
  std::filesystem::create_symlink("loop.plist", pathOf("loop.plist"));
  ASSERT_EQ(mkfifo(pathOf("pipe.plist").c_str(), 0600), 0);
  for (const char* name : {"folder", "broken", "loop", "pipe", "missing"}) {
    EXPECT_FALSE(platform::readJobFile(pathOf(name + ".plist"s))) << name;
  }
}

TEST_F(JobFileOnDisk, HugeFileIsSkipped) {
  const std::string path = pathOf("huge.plist");
  Stage::write(path, dict("<key>Label</key><string>com.huge</string>"));
  ASSERT_TRUE(platform::readJobFile(path));
  std::filesystem::resize_file(path, 50 << 20);
  EXPECT_FALSE(platform::readJobFile(path));
}

}  // namespace
