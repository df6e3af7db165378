#pragma once

namespace quillmark {

/// The frame that areas are in, in pixels.
struct FrameSize {
  int Width = 720;
  int Height = 576;
};

}  // namespace quillmark
