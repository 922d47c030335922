#include "frontends/qt/pictures.h"

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

QIcon warningIcon() {
  return icon(load({"warning", "warning@2x"}));
}
