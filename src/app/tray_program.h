#pragma once

#include <string>

/// The path of the tray's program: beside this one, or in the folder for programs that other
/// programs start. It is a separate program because only it needs a desktop's libraries. "" when
/// it is not installed.
std::string findTrayProgram();

/// Replaces this program by the tray's (exec). Returns only when that fails, after saying why on
/// standard error.
void becomeTrayProgram(const std::string& path);
