#pragma once

#include <cstdint>
#include <span>

#include <QString>

#include "base/Result.h"

namespace quillmark {

/// What happens to the bytes of an existing file beyond the new ones.
enum class OldTail { Kept, Dropped };

/// Whether the disk is waited for. Either way no reader ever sees half a file; only a crash of the whole
/// machine can lose what was not waited for.
enum class Durability {
  Synced,    ///< it is on the disk when it is done
  Unsynced,  ///< for what can be made again, where waiting would cost more than making it
};

struct WriteOptions {
  OldTail Tail = OldTail::Dropped;
  Durability Wait = Durability::Synced;
};

/// Writes `bytes` as the file at `path` so that the file is either as it was or complete: into a second file
/// beside it, which then takes its place with the old one's permissions, and its owner and group where the
/// user may give them. A symbolic link stays one; the file that it names is replaced.
/// Written in place, without being cut first, are a device, a file that has further names (hard links), which
/// stay names of the one file, and a file in a folder that allows no second one; the reason then says so when
/// it failed half-way. A folder, a pipe, a socket or a link to itself is refused.
/// The reason is in words for the user, without the path.
Result<void> ReplaceFile(const QString& path, std::span<const std::uint8_t> bytes,
                         const WriteOptions& options = {});

/// Writes `bytes` after what the file at `path` holds, all of them or none, and creates it if missing. The
/// disk is not waited for. What ReplaceFile refuses is refused.
Result<void> AppendToFile(const QString& path, std::span<const std::uint8_t> bytes);

/// Done as well where the folder is there.
Result<void> MakeFolder(const QString& path);

/// Makes a folder that only the user gets into, and those that it stands in; done as well where it is there.
Result<void> MakePrivateFolder(const QString& path);

/// A name that is not there is no failure.
Result<void> RemoveFile(const QString& path);

}  // namespace quillmark
