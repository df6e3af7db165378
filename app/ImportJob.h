#pragma once

#include <optional>
#include <string>
#include <vector>

#include <QString>

#include "base/Progress.h"
#include "base/Result.h"
#include "containers/Container.h"
#include "sup/StreamLoader.h"

namespace quillmark {

/// A file that Load SUP is for: one that starts as SUP files do, or that no other format claims.
[[nodiscard]] bool IsSupFile(const QString& path);

/// One of the streams that a file holds, ready to be opened.
struct ImportedTrack {
  Track What;  ///< its packets are those of Loaded
  LoadedStream Loaded;
};

struct ImportedFile {
  std::vector<ImportedTrack> Tracks;  ///< at least one
  std::vector<std::string> Notes;
};

/// Reads the streams of a file of any format and indexes them as Load SUP does. A stream that cannot be
/// indexed is left out, which a note says. The reason is without the path; nullopt where `progress` ended it.
[[nodiscard]] Result<std::optional<ImportedFile>> ReadForImport(const QString& path,
                                                                const Progress& progress);

/// The bytes of an imported stream, to be indexed another way.
[[nodiscard]] std::vector<std::uint8_t> TakePackets(ImportedTrack& track);

/// What was noted about the file and about one of its streams, a line each; empty where there is nothing to
/// say.
[[nodiscard]] QString NotesOf(const ImportedFile& file, const ImportedTrack& track);

/// A language for people: "German (de)"; the code alone where it is not known, and "unknown" where there is
/// none.
[[nodiscard]] QString LanguageText(const std::string& code);

}  // namespace quillmark
