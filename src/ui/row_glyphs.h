#pragma once

/// The glyphs and the separator in the menu's rows. A row is a name, a figure and a state, in this
/// order. What stands for a glyph that can't be shown: glyph_stand_ins.h.
namespace RowGlyphs {

inline constexpr const char* kSeparator = "  ·  ";  ///< between the parts of a row
inline constexpr const char* kWorkload = "★ ";      ///< before the name of an AI workload
inline constexpr const char* kProtected = " 🔒";  ///< behind the figure of somebody else's process
inline constexpr const char* kKeptAlive = " ↺";  ///< behind the state of a launch agent

}  // namespace RowGlyphs
