#pragma once

#include <filesystem>
#include <optional>

#include "base/Result.h"

namespace quillmark {

/// A second name of a file, "movie.sub.1.old" beside "movie.sub", so that it is still there when another one
/// has taken its place and has to give it back.
class KeptFile {
 public:
  /// None where there is no file, or one that is written in place since it has further names, or where the
  /// disk knows no second names.
  [[nodiscard]] static std::optional<KeptFile> Of(const std::filesystem::path& path);

  /// The file stands in its place again; else the reason names where it stands.
  Result<void> PutBack() const;
  /// The second name goes.
  void Forget() const;

 private:
  KeptFile(std::filesystem::path file, std::filesystem::path name);

  std::filesystem::path file_;
  std::filesystem::path name_;
};

}  // namespace quillmark
