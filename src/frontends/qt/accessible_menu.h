#pragma once

/// The property that holds what a screen reader says. It is no property of QAction, because a
/// change of one of those makes Qt give an open menu its full height, even beyond the screen.
inline constexpr const char* kSpokenName = "spokenName";

/// Puts menus that are open into the tree that screen readers read, where Qt leaves them out, and
/// lets their items (QWidgetActions) say their property kSpokenName as their name and their
/// statusTip as their description. To be called once; a second time does nothing more.
void makeMenusAccessible();
