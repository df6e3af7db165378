#pragma once

#include <string>

#include "sup/SupStream.h"

namespace quillmark {

/// The lines shown after loading, each ended by CR LF. `stream.Stats` must have its multiple-flags updated.
[[nodiscard]] std::string PrimaryReport(const SupStream& stream);

/// The same for the stream laid over it, with its own heading, and with two warning lines when it uses
/// several colours or opacities for one pixel code.
[[nodiscard]] std::string SecondaryReport(const SupStream& stream);

/// The rows (0-15) that `column` of the usage table marks as used, as upper-case hexadecimal digits joined
/// with ", ".
[[nodiscard]] std::string UsageList(const SupStreamStats& stats, std::size_t column);

}  // namespace quillmark
