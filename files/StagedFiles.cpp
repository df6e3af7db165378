#include "files/StagedFiles.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>
#include <utility>

#include "base/FilePath.h"
#include "base/Words.h"
#include "files/Descriptor.h"
#include "files/ReplaceFile.h"
#include "files/SecondFile.h"
#include "files/SystemCalls.h"

namespace quillmark {
namespace {

namespace fs = std::filesystem;

/// A link that leads nowhere is something, too.
bool Stands(const fs::path& path) {
  std::error_code ignored;
  return fs::exists(fs::symlink_status(path, ignored));
}

Failure At(const fs::path& path, const std::string& reason) {
  return Failure{Utf8FromPath(path) + ": " + reason};
}

Result<void> Replace(const fs::path& from, const fs::path& to) {
  std::ifstream file(from, std::ios::binary);
  const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
  if (!file) {
    return At(from, Words::Tr("it cannot be read"));
  }
  const auto written = ReplaceFile(QString::fromStdString(Utf8FromPath(to)),
                                   {reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()},
                                   {.Wait = Durability::Unsynced});
  return written ? written : At(to, written.Reason());
}

/// What stands in a folder goes before it does.
void RemoveAll(const fs::path& path) {
  std::error_code ignored;
  std::vector<fs::path> found{path};
  if (fs::is_directory(fs::symlink_status(path, ignored))) {
    for (auto entry = fs::recursive_directory_iterator(path, ignored);
         !ignored && entry != fs::recursive_directory_iterator(); entry.increment(ignored)) {
      found.push_back(entry->path());
    }
  }
  std::ranges::reverse(found);
  for (const fs::path& name : found) {
    static_cast<void>(System().Remove(Utf8FromPath(name).c_str()));
  }
}

/// Moves what was staged to where it is meant for, and takes that back unless it is kept.
class Mover {
 public:
  explicit Mover(Overwriting overwriting) : overwriting_(overwriting) {}
  Mover(const Mover&) = delete;
  Mover& operator=(const Mover&) = delete;
  ~Mover() {
    for (const fs::path& path : placed_) {
      RemoveAll(path);
    }
  }

  /// All that stands in one folder to the other one.
  Result<void> MoveAll(const fs::path& from, const fs::path& to) {
    std::error_code error;
    std::vector<fs::path> names;  // all, before any of them leaves
    for (auto entry = fs::directory_iterator(from, error); !error && entry != fs::directory_iterator();
         entry.increment(error)) {
      names.push_back(entry->path().filename());
    }
    if (error) {
      return At(from, error.message());
    }
    for (const fs::path& name : names) {
      if (auto moved = Move(from / name, to / name); !moved) {
        return moved;
      }
    }
    return {};
  }
  void Keep() { placed_.clear(); }

 private:
  Result<void> Move(const fs::path& from, const fs::path& to) {
    if (!Stands(to)) {
      if (System().Rename(Utf8FromPath(from).c_str(), Utf8FromPath(to).c_str()) != 0) {
        return At(to, SystemFailure(errno).Reason);
      }
      placed_.push_back(to);
      return {};
    }
    if (overwriting_ == Overwriting::Refused) {
      return At(to, Words::Tr("it is there already"));
    }
    std::error_code ignored;
    if (!fs::is_directory(from, ignored)) {
      return Replace(from, to);
    }
    return fs::is_directory(to, ignored) ? MoveAll(from, to)
                                         : Result<void>(At(to, Words::Tr("it is no folder")));
  }

  Overwriting overwriting_;
  std::vector<fs::path> placed_;  // that are new
};

}  // namespace

std::vector<QString> ExistingPaths(const std::vector<QString>& paths) {
  std::vector<QString> existing;
  for (const QString& path : paths) {
    if (Stands(PathFromUtf8(path.toStdString()))) {
      existing.push_back(path);
    }
  }
  return existing;
}

Result<void> RefuseExisting(const std::vector<QString>& paths) {
  std::string names;
  for (const QString& path : ExistingPaths(paths)) {
    names += (names.empty() ? "" : ", ") + path.toStdString();
  }
  return names.empty() ? Result<void>() : Result<void>(Failure{Words::Tr("already there: %1", {names})});
}

Result<StagedFiles> StagedFiles::In(const QString& folder) {
  const std::string name = folder.isEmpty() ? "." : folder.toStdString();
  std::string hidden = ".";
  hidden += TemporaryName();
  const fs::path stage = PathFromUtf8(name) / hidden;
  if (System().MakeFolder(Utf8FromPath(stage).c_str(), 0777) != 0) {
    return At(PathFromUtf8(name), SystemFailure(errno).Reason);
  }
  return StagedFiles(name, Utf8FromPath(stage));
}

StagedFiles::StagedFiles(StagedFiles&& other) noexcept
    : folder_(std::move(other.folder_)), stage_(std::exchange(other.stage_, {})) {}

StagedFiles::~StagedFiles() {
  if (!stage_.empty()) {
    RemoveAll(PathFromUtf8(stage_));
  }
}

QString StagedFiles::NameOf(const QString& path) const {
  return path.mid(PathOf({}).size());
}

QString StagedFiles::PathOf(const QString& name) const {
  return QString::fromStdString(stage_) + QLatin1Char('/') + name;
}

Result<void> StagedFiles::AddFolder(const QString& name) {
  auto made = MakeFolder(PathOf(name));
  return made ? made : Failure{name.toStdString() + ": " + made.Reason()};
}

Result<void> StagedFiles::TakePlaces(Overwriting overwriting) {
  Mover mover(overwriting);
  auto moved = mover.MoveAll(PathFromUtf8(stage_), PathFromUtf8(folder_));
  if (moved) {
    mover.Keep();
  }
  return moved;
}

}  // namespace quillmark
