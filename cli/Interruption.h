#pragma once

namespace quillmark::cli {

/// While one exists, the first SIGINT is only remembered, so that the work at hand can end in order; the
/// second one ends the program as ever. A program started with SIGINT ignored goes on ignoring it. One at a
/// time.
class InterruptionGuard {
 public:
  InterruptionGuard();
  ~InterruptionGuard();
  InterruptionGuard(const InterruptionGuard&) = delete;
  InterruptionGuard& operator=(const InterruptionGuard&) = delete;

  [[nodiscard]] static bool Interrupted();

 private:
  using Handler = void (*)(int);
  Handler previous_;
};

}  // namespace quillmark::cli
