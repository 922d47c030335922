#pragma once

#include <string>
#include <string_view>
#include <vector>

/// The parts of a Mac's disk that the edition under test touches, in a folder of this test
/// program's own: a home, the machine's launch agent files, launchctl, Docker.
namespace Stage {

const char* launchctlPath();
const char* machineLaunchAgentsPath();
const char* dockerPath();
std::string homePath();
std::string userLaunchAgentsPath();
std::string bundlePath();
std::string resourcesPath();  ///< of the bundle

/// An empty home and machine, and a launchctl that knows no launch agents.
void reset();

/// Makes a file, and the folders on the way to it; the path is one of those above.
void write(const std::string& path, std::string_view bytes);

/// launchctl is from now on a shell script with this body. Its argument list is noted before.
void setLaunchctl(std::string_view body);
void removeLaunchctl();

/// How launchctl was called, in order: the arguments of each call, joined by "|".
std::vector<std::string> launchctlCalls();

}  // namespace Stage
