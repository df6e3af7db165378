#pragma once

#include "sup/SupStream.h"

namespace quillmark {

/// Two languages of one film, the second of which begins two thirds of a second later and is laid over the
/// first. Both show 200 pictures again and again.
struct TwoFilms {
  explicit TwoFilms(int subtitles);

  SupStream Primary;
  SupStream Secondary;
};

}  // namespace quillmark
