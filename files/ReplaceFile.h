#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include <QString>

namespace quillmark {

/// What happens to the bytes of an existing file beyond the new ones.
enum class OldTail { Kept, Dropped };

/// Writes `bytes` as the file at `path` so that the file is either as it was or complete: into a second file
/// beside it, flushed to the disk, which then takes its place with the old one's permissions. A symbolic link
/// stays one; the file that it names is replaced. Only where the folder allows no second file, or the target
/// is a device, it is written in place, without being cut first; the reason then says so when it failed
/// half-way. A folder, a pipe or a link to itself is refused.
/// nullopt when done; else why not, in words for the user, without the path.
[[nodiscard]] std::optional<QString> ReplaceFile(const QString& path, std::span<const std::uint8_t> bytes,
                                                 OldTail tail);

}  // namespace quillmark
