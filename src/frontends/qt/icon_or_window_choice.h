#pragma once

/// How the program is present on screen.
enum class PresenceKind {
  undecided,     ///< for a moment, at the start
  hostIcon,      ///< an icon that a tray host draws (StatusNotifierItem)
  embeddedIcon,  ///< an icon of our own in a tray that embeds windows (XEmbed)
  window,        ///< the small window
};

struct PresenceFacts {
  bool hostDecided = false;     ///< whether it is known if there is a tray host
  bool hostShowsIcon = false;   ///< there is one, and it shows the icon
  bool embeddingTray = false;   ///< there is an XEmbed tray
  bool patienceIsOver = false;  ///< a host that has not answered by now counts as none
};

constexpr PresenceKind choosePresence(const PresenceFacts& facts) {
  if (facts.hostShowsIcon) return PresenceKind::hostIcon;
  if (!facts.hostDecided && !facts.patienceIsOver) return PresenceKind::undecided;
  return facts.embeddingTray ? PresenceKind::embeddedIcon : PresenceKind::window;
}
