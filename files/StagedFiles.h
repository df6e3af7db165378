#pragma once

#include <string>
#include <utility>
#include <vector>

#include <QString>

#include "base/Result.h"

namespace quillmark {

/// What becomes of files that are there already.
enum class Overwriting {
  Refused,  ///< nothing is written while there is one
  Allowed,
};

/// Those of `paths` at which something stands.
[[nodiscard]] std::vector<QString> ExistingPaths(const std::vector<QString>& paths);
/// Why they are not written: nothing in words where there is none of them.
[[nodiscard]] Result<void> RefuseExisting(const std::vector<QString>& paths);

/// Files that are made together: they stand in a folder of their own until they take their places, all of
/// them or none. Without that they are gone.
class StagedFiles {
 public:
  /// For places in `folder`, and in folders that stand there.
  [[nodiscard]] static Result<StagedFiles> In(const QString& folder);

  StagedFiles(StagedFiles&& other) noexcept;
  StagedFiles(const StagedFiles&) = delete;
  StagedFiles& operator=(const StagedFiles&) = delete;
  ~StagedFiles();

  /// Where to write what is meant for `name` in the folder, or for "name/name" in one that AddFolder made.
  [[nodiscard]] QString PathOf(const QString& name) const;
  /// The name that such a path is meant for.
  [[nodiscard]] QString NameOf(const QString& path) const;
  Result<void> AddFolder(const QString& name);
  /// A file that is there is replaced as ReplaceFile does it, or refused; a folder that is there takes the
  /// new files besides its own. After a failure, whose reason names the file, no new file is left.
  Result<void> TakePlaces(Overwriting overwriting);

 private:
  StagedFiles(std::string folder, std::string stage) : folder_(std::move(folder)), stage_(std::move(stage)) {}

  std::string folder_;
  std::string stage_;  // empty where there is nothing to remove
};

}  // namespace quillmark
