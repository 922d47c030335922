#pragma once

#include <QPlainTextEdit>

/// Text to read and to copy, in a given width: as high as the text needs, up to a limit
/// from which on it scrolls. Never interprets markup; breaks what has no blanks.
class TextBox : public QPlainTextEdit {
 public:
  TextBox(const QString& text, const QFont& font, int width, int heightLimit);
};
