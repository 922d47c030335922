#include "macos/stage.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "tools/temp_folder.h"

namespace Stage {
namespace {

const TempFolder& folder() {
  static const TempFolder theFolder;
  return theFolder;
}

std::string callsPath() {
  return folder() / "calls";
}

}  // namespace

const char* launchctlPath() {
  static const std::string path = folder() / "launchctl";
  return path.c_str();
}

const char* machineLaunchAgentsPath() {
  static const std::string path = folder() / "machine";
  return path.c_str();
}

const char* dockerPath() {
  static const std::string path = folder() / "Docker.app";
  return path.c_str();
}

std::string homePath() {
  return folder() / "home";
}

std::string userLaunchAgentsPath() {
  return homePath() + "/Library/LaunchAgents";
}

std::string bundlePath() {
  return folder() / "bundle";
}

std::string resourcesPath() {
  return bundlePath() + "/Resources";
}

void reset() {
  for (const auto& entry : std::filesystem::directory_iterator(folder().path())) {
    std::filesystem::remove_all(entry);
  }
  std::filesystem::create_directories(userLaunchAgentsPath());
  std::filesystem::create_directories(machineLaunchAgentsPath());
  std::filesystem::create_directories(resourcesPath());
  setLaunchctl("printf 'PID\\tStatus\\tLabel\\n'");
}

void write(const std::string& path, std::string_view bytes) {
  std::filesystem::create_directories(std::filesystem::path(path).parent_path());
  std::ofstream(path, std::ios::binary) << bytes;
}

void setLaunchctl(std::string_view body) {
  const std::string note = "#!/bin/sh\n(IFS='|'; printf '%s\\n' \"$*\") >>'" + callsPath() + "'\n";
  write(launchctlPath(), note + std::string(body) + "\n");
  std::filesystem::permissions(launchctlPath(), std::filesystem::perms::owner_all);
}

void removeLaunchctl() {
  std::filesystem::remove(launchctlPath());
}

std::vector<std::string> launchctlCalls() {
  std::vector<std::string> calls;
  std::ifstream file(callsPath());
  for (std::string line; std::getline(file, line);) calls.push_back(line);
  return calls;
}

}  // namespace Stage
