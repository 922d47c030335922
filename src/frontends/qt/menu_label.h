#pragma once

#include <QString>
#include <string>
#include <string_view>

#include "frontends/qt/tray_host_kind.h"
#include "ui/memory_pressure_view.h"

/// What an item's title becomes for who draws it, so that the reader sees the title as it
/// is: each toolkit takes another character for the mark of an access key. Characters that would
/// break the row or turn it around become U+FFFD, and a title longer than any screen is wide is
/// cut.

/// For a QMenu, where "&" is the mark.
QString menuLabel(std::string_view title);

/// For a menu that a tray host draws: it takes "_" for the mark. Most take every "__" for the
/// character itself; GNOME Shell's extension takes out one "_", the first that another character
/// follows.
std::string hostMenuLabel(std::string_view title, TrayHostKind host);

/// The strip where only text can stand: ten cells, filled as far as memory is used, and the
/// percentage. "██████░░░░ 62%"
std::string stripLabel(const MemoryPressureView& strip);

/// A tooltip's text as HTML that shows exactly this text; Qt would interpret text that looks like
/// markup.
QString plainToolTip(std::string_view text);
