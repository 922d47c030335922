#pragma once

/// The kinds of host that draw the exported menu, as far as the menu depends on it.
enum class TrayHostKind {
  usual,       ///< scrolls what is too high, draws dots, takes every "__" in a label for "_"
  gnomeShell,  ///< GNOME Shell's extension: does none of that
};
