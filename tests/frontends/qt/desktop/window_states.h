#pragma once

#include <string>

/// Whether each window with that title has asked to be kept off task bars; false when there
/// is none.
bool keepsOffTaskbar(const std::string& display, const std::string& title);
