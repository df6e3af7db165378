#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include <QString>

#include "base/Result.h"
#include "files/Descriptor.h"
#include "files/FileOwner.h"

namespace quillmark {

/// A file that grows by whole records and has one owner at a time: nobody else can open it through this
/// class, not even in the same program, until it is closed or its program has ended in whatever way. No other
/// user can read it.
///
/// What was appended outlives the program, however that ends. Nothing is flushed to the disk: after a loss of
/// power the file may lack what was appended last.
class AppendFile {
 public:
  static constexpr std::int64_t MaxLength = std::int64_t{2} << 30;  ///< bytes

  /// Makes a new, empty file; nullopt where the name is taken.
  [[nodiscard]] static Result<std::optional<AppendFile>> Create(const QString& path);
  /// Opens an existing file; nullopt while it has an owner, and when it is gone.
  [[nodiscard]] static Result<std::optional<AppendFile>> Open(const QString& path);

  AppendFile(AppendFile&&) noexcept;
  AppendFile& operator=(AppendFile&&) noexcept;
  AppendFile(const AppendFile&) = delete;
  AppendFile& operator=(const AppendFile&) = delete;
  /// Closes the file and gives it free.
  ~AppendFile();

  [[nodiscard]] QString Path() const;
  /// All that it holds.
  [[nodiscard]] Result<std::vector<std::uint8_t>> ReadAll();
  /// Appends the bytes in one write. When they cannot all be written, the file is as it was before.
  Result<void> Append(std::span<const std::uint8_t> bytes);
  /// Cuts off what stands after the first `length` bytes.
  Result<void> CutTo(std::int64_t length);
  /// Removes the file, which is used no more then; where its folder does not allow that, it is emptied.
  Result<void> Remove();
  /// Gives the file `suffix` after its name, and a number where there is such a file; its new path. It is
  /// used no more then.
  Result<QString> PutAside(const QString& suffix);

 private:
  AppendFile(FileOwner owner, QString path, Descriptor file);
  [[nodiscard]] static Result<std::optional<AppendFile>> Owned(const QString& path, Descriptor file);

  FileOwner owner_;  // goes after the file
  QString path_;
  Descriptor file_;
};

}  // namespace quillmark
