#include "frontends/qt/alert_dialog.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QTextDocument>
#include <QTextLayout>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "frontends/qt/menu_label.h"
#include "frontends/qt/pictures.h"
#include "frontends/qt/qt_text.h"

namespace {

constexpr int kIconSize = 48;
constexpr int kTextWidth = 400;

QLabel* iconLabel(const Alert& alert, const QWidget& dialog) {
  const bool warns = alert.style == Alert::Style::warning && alert.icon != Alert::Icon::badge;
  const QIcon icon = warns ? warningIcon() : badgeIcon();
  auto* label = new QLabel;
  label->setPixmap(icon.pixmap(QSize(kIconSize, kIconSize), dialog.devicePixelRatioF()));
  label->setAlignment(Qt::AlignTop);
  return label;
}

constexpr auto kWrap = QTextOption::WrapAtWordBoundaryOrAnywhere;

/// The height of `text` when wrapped to `width`. Measuring stops when it exceeds `limit`.
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

/// Text to read and to copy. It has a given width and the height that the text needs, up to a
/// limit; beyond that it scrolls. Markup is not interpreted, and words that are too long are
/// broken.
class AlertDialog::TextBox : public QPlainTextEdit {
 public:
  TextBox(const QString& text, const QFont& font, int width, int heightLimit);

  /// What was scrolled to stays in view.
  void show(const QString& text);

 private:
  int width_;
  int heightLimit_;
};

AlertDialog::TextBox::TextBox(const QString& text, const QFont& font, int width, int heightLimit)
    : width_(width), heightLimit_(heightLimit) {
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
  show(text);
}

void AlertDialog::TextBox::show(const QString& text) {
  const int scrolledTo = verticalScrollBar()->value();
  setPlainText(text);
  const int wanted = static_cast<int>(std::ceil(wrappedHeight(text, font(), width_, heightLimit_)));
  setVerticalScrollBarPolicy(wanted > heightLimit_ ? Qt::ScrollBarAlwaysOn
                                                   : Qt::ScrollBarAlwaysOff);
  setFixedSize(width_, std::min(wanted, heightLimit_));
  verticalScrollBar()->setValue(scrolledTo);
}

// It can't be minimized, because it is in no task bar where it could be found again.
AlertDialog::AlertDialog(const Alert& alert)
    : QDialog(nullptr, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                           Qt::WindowCloseButtonHint),
      escapeAnswer_(alert.escapeAnswer()) {
  setWindowTitle("Vorda");
  setWindowIcon(badgeIcon());
  setModal(true);

  QFont bold = font();
  bold.setBold(true);
  const int screenHeight = screen()->availableGeometry().height();
  auto* texts = new QVBoxLayout;
  texts->setSpacing(10);
  texts->addWidget(new TextBox(toQString(alert.messageText), bold, kTextWidth, screenHeight / 5));
  if (!alert.informativeText.empty()) {
    text_ = new TextBox(toQString(alert.informativeText), font(), kTextWidth, screenHeight / 2);
    texts->addWidget(text_);
  }
  texts->addStretch();

  auto* upper = new QHBoxLayout;
  upper->setSpacing(18);
  upper->addWidget(iconLabel(alert, *this));
  upper->addLayout(texts);

  auto* all = new QVBoxLayout(this);
  all->setContentsMargins(20, 20, 20, 16);
  all->setSpacing(16);
  all->setSizeConstraint(QLayout::SetFixedSize);
  all->addLayout(upper);
  addButtons(alert);
}

void AlertDialog::setText(const std::string& informative) {
  if (text_ != nullptr) text_->show(toQString(informative));
}

void AlertDialog::addButtons(const Alert& alert) {
  const std::vector<std::string> titles = alert.shownButtons();
  auto* row = new QHBoxLayout;
  row->addStretch();
  for (std::size_t i = 0; i < titles.size(); ++i) {
    const int index = static_cast<int>(i);
    auto* button = new QPushButton(menuLabel(titles[i]));
    connect(button, &QPushButton::clicked, this, [this, index] { choose(index); });
    row->addWidget(button);
    if (i == 0) {
      button->setDefault(true);
      button->setFocus();
    }
  }
  static_cast<QVBoxLayout*>(layout())->addLayout(row);
}

void AlertDialog::choose(int index) {
  answer_ = kAlertFirstButtonReturn + index;
  accept();
}

void AlertDialog::reject() {
  answer_ = escapeAnswer_;
  QDialog::reject();
}
