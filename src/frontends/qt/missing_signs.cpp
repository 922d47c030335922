#include "frontends/qt/missing_signs.h"

#include <QGlyphRun>
#include <QTextLayout>

namespace {

struct StandIn {
  const char* sign;
  const char* text;
};

constexpr StandIn kStandIns[] = {{"🔒", "[locked]"}, {"★", "*"}, {"↺", "~"}};

}  // namespace

bool isShown(const QString& text, const QFont& font) {
  QTextLayout layout(text, font);
  layout.beginLayout();
  layout.createLine();
  layout.endLayout();
  for (const QGlyphRun& run : layout.glyphRuns()) {
    if (run.glyphIndexes().contains(0)) return false;
  }
  return true;
}

QString withMissingSignsReplaced(QString text, const std::function<bool(const QString&)>& shown) {
  for (const auto& [sign, standIn] : kStandIns) {
    if (text.contains(sign) && !shown(sign)) text.replace(sign, standIn);
  }
  return text;
}
