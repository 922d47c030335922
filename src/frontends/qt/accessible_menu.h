#pragma once

/// Not one of a QAction's own: when one of those changes, an open menu takes its full height again,
/// whatever the screen has.
inline constexpr const char* kSpokenName = "spokenName";

/// Puts menus that are open into the tree that screen readers read, where Qt leaves them out, and
/// lets their items (QWidgetActions) say their property kSpokenName as their name and their
/// statusTip as their description. To be called once; a second time does nothing more.
void makeMenusAccessible();
