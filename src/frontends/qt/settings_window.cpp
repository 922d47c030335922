#include "frontends/qt/settings_window.h"

#include <QLabel>
#include <QShortcut>
#include <QVBoxLayout>

#include "frontends/qt/pictures.h"
#include "frontends/qt/qt_text.h"

namespace {

QFont lineFont(const SettingsView::Line& line, QFont font) {
  double scale = 1;
  switch (line.font) {
    case SettingsView::Font::body:
      break;
    case SettingsView::Font::title2Bold:
      scale = 1.4;
      font.setBold(true);
      break;
    case SettingsView::Font::caption:
      scale = 0.9;
      break;
    case SettingsView::Font::caption2:
      scale = 0.85;
      break;
  }
  font.setPointSizeF(font.pointSizeF() * scale);
  return font;
}

/// The text colour, fainter the less a line matters.
QPalette linePalette(const SettingsView::Line& line, QPalette palette) {
  double strength = 1;
  if (line.foreground == SettingsView::Foreground::secondary) strength = 0.7;
  if (line.foreground == SettingsView::Foreground::tertiary) strength = 0.5;
  QColor color = palette.color(QPalette::WindowText);
  color.setAlphaF(static_cast<float>(strength));
  palette.setColor(QPalette::WindowText, color);
  return palette;
}

}  // namespace

SettingsWindow::SettingsWindow(const std::vector<SettingsView::Line>& lines) {
  setAttribute(Qt::WA_DeleteOnClose);
  setWindowTitle(SettingsView::kTitle);
  setWindowIcon(badgeIcon());
  setFixedSize(SettingsView::kWidth, SettingsView::kHeight);

  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(SettingsView::kPadding, SettingsView::kPadding, SettingsView::kPadding,
                             SettingsView::kPadding);
  column->setSpacing(6);
  column->addStretch();
  for (const SettingsView::Line& line : lines) {
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
