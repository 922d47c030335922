#pragma once

#include <QByteArray>
#include <QFileSystemWatcher>
#include <QObject>
#include <QPalette>
#include <QString>
#include <QTimer>
#include <optional>

/// What a file of KDE's says of colours: kdeglobals, or a colour scheme.
struct KdeColors {
  std::optional<QPalette> palette;  ///< none where it names no colours for windows
  QString scheme;                   ///< the name of the colour scheme; "" for none
};

/// Reads such a file. What makes no sense counts as not said.
[[nodiscard]] KdeColors readKdeColors(const QByteArray& file);

/// Watches which colours the user has chosen for Plasma. Qt itself looks only when it starts.
class KdeColorsWatch : public QObject {
  Q_OBJECT

 public:
  /// Reads them at once, where Plasma is the desktop (as XDG_CURRENT_DESKTOP says).
  KdeColorsWatch();

  /// None where Plasma is not the desktop, or has been told nothing.
  const std::optional<QPalette>& palette() const { return palette_; }

 Q_SIGNALS:
  void changed();

 private:
  void read();
  void watchFile();

  QString file_;
  std::optional<QPalette> palette_;
  QFileSystemWatcher watcher_;
  QTimer soon_;
};
