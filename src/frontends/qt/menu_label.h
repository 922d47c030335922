#pragma once

#include <QString>
#include <string>
#include <string_view>

#include "frontends/qt/tray_host_kind.h"
#include "ui/memory_pressure_view.h"

/// Turns an item's title into the label for those who draw it. Each toolkit has another character
/// that marks an access key, which is escaped. Characters that would break the row or reverse it
/// become U+FFFD, and a title that is wider than any screen is cut.

/// For a QMenu, where "&" is the mark.
QString menuLabel(std::string_view title);

/// For a menu that a tray host draws, where "_" is the mark. Most hosts show every "__" as "_";
/// GNOME Shell's extension only removes one "_", the first that is followed by another character.
std::string hostMenuLabel(std::string_view title, TrayHostKind host);

/// The strip where only text can stand: ten cells, filled as far as memory is used, and the
/// percentage. "██████░░░░ 62%"
std::string stripLabel(const MemoryPressureView& strip);

/// A tooltip's text as HTML that shows exactly this text; Qt would interpret text that looks like
/// markup.
QString plainToolTip(std::string_view text);
