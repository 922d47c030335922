#include "frontends/qt/text_box.h"

#include <QTextDocument>
#include <QTextLayout>
#include <algorithm>
#include <cmath>

namespace {

constexpr auto kWrap = QTextOption::WrapAtWordBoundaryOrAnywhere;

/// How high `text` is in lines of `width`; measuring ends once it is more than `limit`.
double wrappedHeight(const QString& text, const QFont& font, int width, double limit) {
  double height = 0;
  for (const QString& paragraph : text.split('\n')) {
    QTextLayout layout(paragraph, font);
    QTextOption option;
    option.setWrapMode(kWrap);
    layout.setTextOption(option);
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid() && height <= limit;
         line = layout.createLine()) {
      line.setLeadingIncluded(true);
      line.setLineWidth(width);
      height += line.height();
    }
    layout.endLayout();
    if (height > limit) break;
  }
  return height;
}

}  // namespace

TextBox::TextBox(const QString& text, const QFont& font, int width, int heightLimit) {
  setReadOnly(true);
  setFrameShape(QFrame::NoFrame);
  setFocusPolicy(Qt::ClickFocus);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setWordWrapMode(kWrap);
  document()->setDocumentMargin(0);
  setFont(font);
  QPalette colors = palette();
  colors.setColor(QPalette::Base, Qt::transparent);
  setPalette(colors);
  setPlainText(text);

  const int wanted = static_cast<int>(std::ceil(wrappedHeight(text, font, width, heightLimit)));
  setVerticalScrollBarPolicy(wanted > heightLimit ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff);
  setFixedSize(width, std::min(wanted, heightLimit));
}
