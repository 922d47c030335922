#include "frontends/qt/settings_window.h"

#include <QLabel>
#include <QShortcut>
#include <QVBoxLayout>

#include "frontends/qt/pictures.h"
#include "frontends/qt/qt_text.h"

namespace {

QFont lineFont(const SettingsLine& line, QFont font) {
  double scale = 1;
  switch (line.font) {
    case SettingsLine::Font::body:
      break;
    case SettingsLine::Font::title2Bold:
      scale = 1.4;
      font.setBold(true);
      break;
    case SettingsLine::Font::caption:
      scale = 0.9;
      break;
    case SettingsLine::Font::caption2:
      scale = 0.85;
      break;
  }
  font.setPointSizeF(font.pointSizeF() * scale);
  return font;
}

/// The text colour, fainter the less a line matters.
QPalette linePalette(const SettingsLine& line, QPalette palette) {
  double strength = 1;
  if (line.foreground == SettingsLine::Foreground::secondary) strength = 0.7;
  if (line.foreground == SettingsLine::Foreground::tertiary) strength = 0.5;
  QColor color = palette.color(QPalette::WindowText);
  color.setAlphaF(static_cast<float>(strength));
  palette.setColor(QPalette::WindowText, color);
  return palette;
}

}  // namespace

SettingsWindow::SettingsWindow(const std::vector<SettingsLine>& lines) {
  setAttribute(Qt::WA_DeleteOnClose);
  setWindowTitle("Vorda");
  setWindowIcon(badgeIcon());
  setFixedSize(kWidth, kHeight);

  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(kPadding, kPadding, kPadding, kPadding);
  column->setSpacing(6);
  column->addStretch();
  for (const SettingsLine& line : lines) {
    auto* label = new QLabel(toQString(line.text));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setFont(lineFont(line, font()));
    label->setPalette(linePalette(line, palette()));
    label->setContentsMargins(0, line.topPadding, 0, 0);
    column->addWidget(label);
  }
  column->addStretch();

  const auto* closing = new QShortcut(QKeySequence(Qt::Key_Escape), this);
  connect(closing, &QShortcut::activated, this, &QWidget::close);
}
