#pragma once

#include <QFont>
#include <QString>
#include <functional>

/// Whether some font shows this text, and not an empty box for it.
bool isShown(const QString& text, const QFont& font);

/// The text with words in place of those of the menu's own glyphs (a lock, a star, an arrow)
/// that `shown` denies.
QString withMissingGlyphsReplaced(QString text, const std::function<bool(const QString&)>& shown);
