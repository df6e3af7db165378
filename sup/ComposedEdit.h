#pragma once

#include "sup/StreamEdit.h"

namespace quillmark {

/// One edit that does what `first` and then `second` do. `second` is for the bytes that `first` leaves; each
/// fits the bytes that it is for. Takes time in proportion to their places and bytes.
[[nodiscard]] StreamEdit ComposedEdit(const StreamEdit& first, const StreamEdit& second);

}  // namespace quillmark
