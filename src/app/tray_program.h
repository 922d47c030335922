#pragma once

#include <string>

/// Where the tray's own program is: beside this one, or in the folder for programs that
/// others start. It is a program of its own because it alone needs a desktop's libraries.
/// "" when it is not installed.
std::string findTrayProgram();

/// Becomes the tray's program. Returns only when that fails, and then says why on standard
/// error.
void becomeTrayProgram(const std::string& path);
