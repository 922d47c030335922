#include "frontends/qt/missing_glyphs.h"

#include <QGlyphRun>
#include <QTextLayout>

namespace {

struct StandIn {
  const char* glyph;
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

QString withMissingGlyphsReplaced(QString text, const std::function<bool(const QString&)>& shown) {
  for (const auto& [glyph, standIn] : kStandIns) {
    if (text.contains(glyph) && !shown(glyph)) text.replace(glyph, standIn);
  }
  return text;
}
