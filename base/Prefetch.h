#pragma once

namespace quillmark {

// Asks for the memory at an address ahead of its use. What is asked for may be anywhere within an array or
// one past its end.
//
// Inlined always: GCC takes a function in which nothing else is left for one without effect, and drops its
// calls. What these are called from has to do something else as well, or to be inlined always, too.

[[gnu::always_inline]] inline void PrefetchForReading([[maybe_unused]] const void* at) {
#if defined(__GNUC__)
  __builtin_prefetch(at);
#endif
}

[[gnu::always_inline]] inline void PrefetchForWriting([[maybe_unused]] const void* at) {
#if defined(__GNUC__)
  __builtin_prefetch(at, 1);
#endif
}

}  // namespace quillmark
