#pragma once

/// The screens that the window tests run on: one for each scale, in this order. The first one is primary.
namespace quillmark::test {

inline constexpr double ScreenScales[] = {1, 1.25, 1.5, 1.75, 2, 2.5};

}  // namespace quillmark::test
