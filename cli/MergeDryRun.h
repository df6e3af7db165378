#pragma once

#include "cli/CommandResult.h"
#include "cli/Commands.h"
#include "cli/Console.h"
#include "render/MergedInputReader.h"
#include "sup/SupStream.h"

namespace quillmark::cli {

/// Tells of every packet that the merge would write, and of what no packet shows: in words with a summary
/// first, or as a JSON object. Ends as the merge would.
CommandResult ReviewMerge(const SupStream& primary, const SupStream& secondary, const MergeSettings& settings,
                          const MergeOptions& options, const Console& console);

}  // namespace quillmark::cli
