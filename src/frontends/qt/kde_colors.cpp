#include "frontends/qt/kde_colors.h"

#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QStandardPaths>
#include <string>
#include <utility>

#include "text/split.h"

namespace {

constexpr qint64 kMostBytes = 1 << 20;
constexpr int kMilliseconds = 50;  // one change comes as several events

/// The values of each group, by "group/key".
using Values = QHash<QByteArray, QByteArray>;

Values valuesOf(const QByteArray& file) {
  Values values;
  QByteArray group;
  for (const QByteArray& raw : file.left(kMostBytes).split('\n')) {
    const QByteArray line = raw.trimmed();
    if (line.startsWith('[') && line.endsWith(']')) {
      group = line.mid(1, line.size() - 2);
    } else if (const qsizetype equals = line.indexOf('='); equals > 0) {
      values.insert(group + '/' + line.left(equals).trimmed(), line.mid(equals + 1).trimmed());
    }
  }
  return values;
}

/// A colour is written "red,green,blue", by its name or as "#rrggbb".
std::optional<QColor> colorOf(const QByteArray& value) {
  const QList<QByteArray> parts = value.split(',');
  if (parts.size() < 3) {
    const QColor named(QString::fromLatin1(value.left(32)));
    return named.isValid() ? std::optional(named) : std::nullopt;
  }
  int rgb[3] = {};
  for (int i = 0; i < 3; ++i) {
    bool isNumber = false;
    rgb[i] = parts[i].trimmed().toInt(&isNumber);
    if (!isNumber || rgb[i] < 0 || rgb[i] > 255) return std::nullopt;
  }
  return QColor(rgb[0], rgb[1], rgb[2]);
}

struct Place {
  const char* key;
  QPalette::ColorRole role;
};

/// All but the backgrounds of windows and buttons: from these two Qt works out frames and shadows.
constexpr Place kPlaces[] = {
    {"Colors:Window/ForegroundNormal", QPalette::WindowText},
    {"Colors:View/BackgroundNormal", QPalette::Base},
    {"Colors:View/BackgroundAlternate", QPalette::AlternateBase},
    {"Colors:View/ForegroundNormal", QPalette::Text},
    {"Colors:Button/ForegroundNormal", QPalette::ButtonText},
    {"Colors:Selection/BackgroundNormal", QPalette::Highlight},
    {"Colors:Selection/ForegroundNormal", QPalette::HighlightedText},
    {"Colors:Tooltip/BackgroundNormal", QPalette::ToolTipBase},
    {"Colors:Tooltip/ForegroundNormal", QPalette::ToolTipText},
    {"Colors:View/ForegroundLink", QPalette::Link},
    {"Colors:View/ForegroundVisited", QPalette::LinkVisited},
};

QByteArray contentsOf(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.read(kMostBytes) : QByteArray();
}

/// What the files say, the user's own first.
std::optional<QPalette> chosenPalette() {
  const QStringList files =
      QStandardPaths::locateAll(QStandardPaths::GenericConfigLocation, "kdeglobals");
  for (const QString& path : files) {
    const KdeColors colors = readKdeColors(contentsOf(path));
    if (colors.palette) return colors.palette;
    if (colors.scheme.isEmpty() || colors.scheme.contains('/')) continue;
    const QString scheme = QStandardPaths::locate(QStandardPaths::GenericDataLocation,
                                                  "color-schemes/" + colors.scheme + ".colors");
    if (!scheme.isEmpty()) return readKdeColors(contentsOf(scheme)).palette;
  }
  return std::nullopt;
}

}  // namespace

KdeColors readKdeColors(const QByteArray& file) {
  const Values values = valuesOf(file);
  KdeColors colors{std::nullopt, QString::fromUtf8(values.value("General/ColorScheme"))};
  const auto color = [&values](const char* key) { return colorOf(values.value(key)); };
  const auto window = color("Colors:Window/BackgroundNormal");
  if (!window || !color("Colors:Window/ForegroundNormal")) return colors;
  QPalette palette(color("Colors:Button/BackgroundNormal").value_or(*window), *window);
  for (const auto& [key, role] : kPlaces) {
    if (const auto said = color(key)) palette.setColor(role, *said);
  }
  colors.palette = palette;
  return colors;
}

KdeColorsWatch::KdeColorsWatch() {
  const std::string desktops = qgetenv("XDG_CURRENT_DESKTOP").toStdString();
  if (!text::holdsPart(desktops, ':', "KDE")) return;
  const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
  file_ = folder + "/kdeglobals";
  soon_.setSingleShot(true);
  soon_.setInterval(kMilliseconds);
  connect(&soon_, &QTimer::timeout, this, &KdeColorsWatch::read);
  // It is written in place, or another file takes its name.
  connect(&watcher_, &QFileSystemWatcher::fileChanged, &soon_, qOverload<>(&QTimer::start));
  connect(&watcher_, &QFileSystemWatcher::directoryChanged, &soon_, qOverload<>(&QTimer::start));
  watcher_.addPath(folder);
  watchFile();
  palette_ = chosenPalette();
}

void KdeColorsWatch::watchFile() {
  if (!watcher_.files().contains(file_) && QFileInfo::exists(file_)) watcher_.addPath(file_);
}

void KdeColorsWatch::read() {
  watchFile();
  const std::optional<QPalette> palette = chosenPalette();
  if (std::exchange(palette_, palette) != palette) Q_EMIT changed();
}
