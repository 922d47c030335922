// What is tested is what a Mac compiles: the edition's sources know of no other build.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

namespace {

std::string contentOf(const std::filesystem::path& path) {
  std::stringstream content;
  content << std::ifstream(path).rdbuf();
  return content.str();
}

/// The edition's own files: those of its rooms, and in app/ those that are named after it.
std::vector<std::filesystem::path> editionSources() {
  const std::filesystem::path root(SOURCE_FOLDER);
  std::vector<std::filesystem::path> sources;
  for (const char* room : {"platform/macos", "frontends/appkit", "app"}) {
    for (const auto& entry : std::filesystem::directory_iterator(root / room)) {
      const auto name = entry.path().filename().string();
      const bool isText = name.ends_with(".h") || name.ends_with(".cpp") || name.ends_with(".mm");
      const bool isAppsOther =
          room == std::string("app") && name.find("macos") == std::string::npos;
      if (isText && !isAppsOther) sources.push_back(entry.path());
    }
  }
  return sources;
}

TEST(EditionSources, HoldNoSwitch) {
  const auto sources = editionSources();
  EXPECT_GT(sources.size(), 40);
  for (const auto& source : sources) {
    const std::string text = contentOf(source);
    EXPECT_FALSE(text.empty()) << source;
    for (const char* word : {"#if", "#elif", "GNUSTEP", "__APPLE__", "__linux__", "TEST"}) {
      EXPECT_EQ(text.find(word), std::string::npos) << source << " says " << word;
    }
  }
}

// So that Apple's compiler and the one on Linux read the same program.
TEST(EditionSources, KeepToWhatBothCompilersKnow) {
  for (const auto& source : editionSources()) {
    const std::string text = contentOf(source);
    for (const char* word : {"^{", "^(", "__bridge", "__weak", "__block", "@available"}) {
      EXPECT_EQ(text.find(word), std::string::npos) << source << " says " << word;
    }
  }
}

// The tests have places of their own; the Mac's stand in one file.
TEST(EditionSources, NameAMacsPlaces) {
  const std::string text =
      contentOf(std::filesystem::path(SOURCE_FOLDER) / "platform/macos/places.cpp");
  for (const char* place :
       {"kLaunchctl = \"/bin/launchctl\"", "kMachineLaunchAgents = \"/Library/LaunchAgents\"",
        "kActivityMonitor = \"/System/Applications/Utilities/Activity Monitor.app\"",
        "kDockerDesktop = \"/Applications/Docker.app\""}) {
    EXPECT_NE(text.find(place), std::string::npos) << place;
  }
}

}  // namespace
