#pragma once

/// What stands for the program on screen.
enum class PresenceKind {
  undecided,     ///< for a moment, at the start
  hostIcon,      ///< an icon that a tray host draws (StatusNotifierItem)
  embeddedIcon,  ///< an icon of our own in a tray that embeds windows (XEmbed)
  window,        ///< the small window
};

struct PresenceFacts {
  bool hostDecided = false;     ///< it is known whether a tray host is there
  bool hostShowsIcon = false;   ///< one is, and knows of the icon
  bool embeddingTray = false;   ///< an XEmbed tray is there
  bool patienceIsOver = false;  ///< a host that has not answered by now counts as none
};

constexpr PresenceKind choosePresence(const PresenceFacts& facts) {
  if (facts.hostShowsIcon) return PresenceKind::hostIcon;
  if (!facts.hostDecided && !facts.patienceIsOver) return PresenceKind::undecided;
  return facts.embeddingTray ? PresenceKind::embeddedIcon : PresenceKind::window;
}
