#pragma once

#include <QIcon>
#include <QImage>
#include <vector>

/// The pictures in packaging/icons/, which the build renders in every size.

/// The program's badge.
QIcon badgeIcon();

/// The same as single pictures, for a tray host.
std::vector<QImage> badgePictures();

/// The same with a mark that asks for attention.
std::vector<QImage> attentionPictures();

QIcon warningIcon();
