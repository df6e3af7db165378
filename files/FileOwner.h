#pragma once

#include <memory>
#include <optional>

#include <QString>

#include "base/Result.h"

class QLockFile;

namespace quillmark {

/// The right to a file that one has at a time, also within a program. It ends with its holder, or with the
/// program in whatever way that ends.
class FileOwner {
 public:
  /// Of an open file; nullopt while another has it, and when the file is gone. Where the system can, it is
  /// held by the file's own handle, else by a second file of that name with ".lock" after it.
  [[nodiscard]] static Result<std::optional<FileOwner>> Of(int file, const QString& path);

  /// Whether it stays while the file is closed, as it must be to be removed or renamed.
#ifdef _WIN32
  static constexpr bool OutlivesHandle = true;
#else
  static constexpr bool OutlivesHandle = false;
#endif

  FileOwner(FileOwner&&) noexcept;
  FileOwner& operator=(FileOwner&&) noexcept;
  FileOwner(const FileOwner&) = delete;
  FileOwner& operator=(const FileOwner&) = delete;
  ~FileOwner();

 private:
  explicit FileOwner(std::unique_ptr<QLockFile> lock);

  std::unique_ptr<QLockFile> lock_;  // none where the handle holds it
};

}  // namespace quillmark
