#include "app/UserMemory.h"

#include <QDir>
#include <QSettings>
#include <QVariant>

namespace quillmark {
namespace {

constexpr QLatin1String RecentKey("recent");
constexpr QLatin1String CornerKey("window/corner");
constexpr QLatin1String SizeKey("window/size");
constexpr QLatin1String MaximisedKey("window/maximised");

QString FolderKey(const QString& kind) {
  return QStringLiteral("folders/") + kind;
}

QString ArrangementKey(const QString& part) {
  return QStringLiteral("arrangement/") + part;
}

}  // namespace

UserMemory::UserMemory() = default;
UserMemory::~UserMemory() = default;

void UserMemory::Keep() {
  settings_ = std::make_unique<QSettings>(QStringLiteral("quillmark"), QStringLiteral("quillmark"));
  recent_ = settings_->value(RecentKey).toStringList().mid(0, MaxRecentFiles);
  values_.clear();
  for (const QString& key : settings_->allKeys()) {
    values_[key] = settings_->value(key);
  }
}

void UserMemory::Write(const QString& key, const QVariant& value) {
  if (values_.value(key) == value) {
    return;
  }
  values_[key] = value;
  if (settings_) {
    settings_->setValue(key, value);
  }
}

void UserMemory::AddRecentFile(const QString& path) {
  if (settings_) {
    // Another window may have opened files meanwhile.
    settings_->sync();
    recent_ = settings_->value(RecentKey).toStringList();
    values_[RecentKey] = recent_;
  }
  recent_.removeAll(path);
  recent_.prepend(path);
  recent_ = recent_.mid(0, MaxRecentFiles);
  Write(RecentKey, recent_);
}

void UserMemory::ForgetRecentFiles() {
  recent_.clear();
  Write(RecentKey, recent_);
}

QString UserMemory::Folder(const QString& kind) const {
  const QString folder = values_.value(FolderKey(kind)).toString();
  return !folder.isEmpty() && QDir(folder).exists() ? folder : QString();
}

void UserMemory::SetFolder(const QString& kind, const QString& folder) {
  Write(FolderKey(kind), folder);
}

QVariant UserMemory::Arrangement(const QString& part) const {
  return values_.value(ArrangementKey(part));
}

void UserMemory::SetArrangement(const QString& part, const QVariant& arrangement) {
  Write(ArrangementKey(part), arrangement);
}

std::optional<WindowPlace> UserMemory::Place() const {
  const WindowPlace place{.Corner = values_.value(CornerKey).toPoint(),
                          .Size = values_.value(SizeKey).toSize(),
                          .IsMaximised = values_.value(MaximisedKey).toBool()};
  return place.Size.isEmpty() ? std::nullopt : std::optional(place);
}

void UserMemory::SetPlace(const WindowPlace& place) {
  Write(CornerKey, place.Corner);
  Write(SizeKey, place.Size);
  Write(MaximisedKey, place.IsMaximised);
}

UsablePlace FitToScreens(const WindowPlace& place, const QList<QRect>& screens) {
  for (const QRect& screen : screens) {
    if (screen.contains(QRect(place.Corner, place.Size))) {
      return {.Corner = place.Corner, .Size = place.Size};
    }
  }
  return {.Corner = std::nullopt,
          .Size = screens.isEmpty() ? place.Size : place.Size.boundedTo(screens.constFirst().size())};
}

}  // namespace quillmark
