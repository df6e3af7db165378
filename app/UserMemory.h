#pragma once

#include <memory>
#include <optional>

#include <QRect>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVariantMap>

class QSettings;

namespace quillmark {

/// Where the window stood.
struct WindowPlace {
  QPoint Corner;  ///< the upper left one, of the decoration
  QSize Size;     ///< of the inside
  bool IsMaximised = false;

  bool operator==(const WindowPlace&) const = default;
};

/// What the program knows of its user: the files opened last, the folders where files were chosen last, the
/// window's place. It lasts for this run, or also for later ones once Keep() was called. Where nothing can be
/// read or written, it is forgotten in silence.
class UserMemory {
 public:
  static constexpr qsizetype MaxRecentFiles = 10;

  UserMemory();
  ~UserMemory();
  UserMemory(const UserMemory&) = delete;
  UserMemory& operator=(const UserMemory&) = delete;

  /// From now on this is the user's settings file, `quillmark/quillmark.conf` below $XDG_CONFIG_HOME or else
  /// ~/.config.
  void Keep();

  /// Newest first.
  [[nodiscard]] const QStringList& RecentFiles() const { return recent_; }
  void AddRecentFile(const QString& path);
  void ForgetRecentFiles();

  /// Empty where none is known, or where it is gone. `kind` is a word of the program's own.
  [[nodiscard]] QString Folder(const QString& kind) const;
  void SetFolder(const QString& kind, const QString& folder);

  /// How the user arranged a part of the window, in whatever form that part has it; null where it is not
  /// known. `part` is a word of the program's own.
  [[nodiscard]] QVariant Arrangement(const QString& part) const;
  void SetArrangement(const QString& part, const QVariant& arrangement);

  [[nodiscard]] std::optional<WindowPlace> Place() const;
  void SetPlace(const WindowPlace& place);

 private:
  void Write(const QString& key, const QVariant& value);

  std::unique_ptr<QSettings> settings_;  // none: only for this run
  QStringList recent_;
  QVariantMap values_;
};

/// The part of `place` that can be used on these screens: all of it where it lies on one of them; otherwise
/// no corner, and a size that fits the first one.
struct UsablePlace {
  std::optional<QPoint> Corner;
  QSize Size;
};
[[nodiscard]] UsablePlace FitToScreens(const WindowPlace& place, const QList<QRect>& screens);

}  // namespace quillmark
