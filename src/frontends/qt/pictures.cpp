#include "frontends/qt/pictures.h"

#include <QPainter>
#include <QString>
#include <initializer_list>

namespace {

std::vector<QImage> load(std::initializer_list<const char*> names) {
  std::vector<QImage> pictures;
  for (const char* name : names) {
    QImage picture;
    if (!picture.load(":/" + QString(name) + ".png")) continue;
    // For a file name with "@2x", Qt halves the picture's size; undo that.
    picture.setDevicePixelRatio(1);
    pictures.push_back(picture);
  }
  return pictures;
}

QIcon icon(const std::vector<QImage>& pictures) {
  QIcon result;
  for (const QImage& picture : pictures) result.addPixmap(QPixmap::fromImage(picture));
  return result;
}

}  // namespace

QIcon badgeIcon() {
  return icon(badgePictures());
}

std::vector<QImage> badgePictures() {
  return load({"badge-22", "badge-24", "badge-32", "HalvekBadge", "badge-64", "HalvekBadge@2x"});
}

std::vector<QImage> attentionPictures() {
  std::vector<QImage> pictures = badgePictures();
  for (QImage& picture : pictures) {
    picture = picture.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(230, 160, 30));  // what warns is of this colour in a terminal, too
    const double size = picture.width() * 0.4;
    painter.drawEllipse(QRectF(picture.width() - size, 0, size, size));
  }
  return pictures;
}

QIcon warningIcon() {
  return icon(load({"warning", "warning@2x"}));
}
