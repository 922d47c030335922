#pragma once

#include <string>
#include <vector>

#include "ui/menu.h"

/// Tells the items of one menu apart by what they mean. An item of the next menu with the
/// same key means the same (the same action on the same process, the same launch agent), so
/// it may take the place of the old one on screen, under the user's pointer. One with
/// another key must not.
///
/// Answers one key per item, in order; no two are equal.
std::vector<std::string> menuKeys(const std::vector<MenuItem>& items);
