#pragma once

#include <memory>

#include "ui/menu.h"

/// A menu as it was built once. Whoever shows its items holds it, so that an item means what
/// it says for as long as somebody can choose it.
using MenuSnapshot = std::shared_ptr<const Menu>;
