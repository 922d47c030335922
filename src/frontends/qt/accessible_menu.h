#pragma once

/// Puts menus that are open into the tree that screen readers read, where Qt leaves them out, and
/// lets their items (QWidgetActions) say their whatsThis as their name and their statusTip as their
/// description. To be called once; a second time does nothing more.
void makeMenusAccessible();
