#include "sup/StreamEdit.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "sup/StreamLoader.h"

namespace quillmark {
namespace {

/// How the edit and a stream of `length` bytes fit.
struct Fit {
  bool Fits = false;
  bool KeepsLengths = true;  ///< every place takes out as much as it puts in
  std::size_t NewLength = 0;
  std::size_t Removed = 0;  ///< all that is taken out
};

Fit FitOf(const StreamEdit& edit, std::size_t length) {
  Fit fit;
  std::uint64_t end = 0;  // of the place before
  std::uint64_t inserted = 0;
  for (const StreamEdit::Place& place : edit.Places) {
    if (place.Offset < end) {
      return {};
    }
    end = std::uint64_t{place.Offset} + place.Removed;
    inserted += place.Inserted;
    fit.Removed += place.Removed;
    fit.KeepsLengths = fit.KeepsLengths && place.Removed == place.Inserted;
  }
  if (end > length || inserted != edit.Bytes.size()) {
    return {};
  }
  fit.NewLength = length - fit.Removed + inserted;
  fit.Fits = fit.NewLength <= MaxStreamLength;
  return fit;
}

void SwapBytes(std::span<std::uint8_t> bytes, StreamEdit& edit) {
  std::uint8_t* other = edit.Bytes.data();
  for (const StreamEdit::Place& place : edit.Places) {
    std::uint8_t* const here = bytes.data() + place.Offset;
    std::swap_ranges(here, here + place.Removed, other);
    other += place.Removed;
  }
}

/// The bytes with the edit's in them, with room for `more` behind them; the edit becomes its inverse.
std::vector<std::uint8_t> Spliced(std::span<const std::uint8_t> bytes, StreamEdit& edit, const Fit& fit,
                                  std::size_t more) {
  std::vector<std::uint8_t> spliced;
  spliced.reserve(fit.NewLength + more);
  std::vector<std::uint8_t> removed;
  removed.reserve(fit.Removed);
  const auto append = [](std::vector<std::uint8_t>& to, std::span<const std::uint8_t> from) {
    to.insert(to.end(), from.begin(), from.end());
  };
  std::span<const std::uint8_t> inserted = edit.Bytes;
  std::size_t done = 0;
  for (StreamEdit::Place& place : edit.Places) {
    append(spliced, bytes.subspan(done, place.Offset - done));
    done = std::size_t{place.Offset} + place.Removed;
    append(removed, bytes.subspan(place.Offset, place.Removed));
    place.Offset = static_cast<std::uint32_t>(spliced.size());
    append(spliced, inserted.first(place.Inserted));
    inserted = inserted.subspan(place.Inserted);
    std::swap(place.Removed, place.Inserted);
  }
  append(spliced, bytes.subspan(done));
  edit.Bytes = std::move(removed);
  return spliced;
}

Failure DoesNotFit() {
  return {"the change does not fit the stream"};
}

}  // namespace

void StreamEdit::Replace(std::size_t offset, std::size_t removed, std::span<const std::uint8_t> inserted) {
  Places.push_back({.Offset = static_cast<std::uint32_t>(offset),
                    .Removed = static_cast<std::uint32_t>(removed),
                    .Inserted = static_cast<std::uint32_t>(inserted.size())});
  Bytes.insert(Bytes.end(), inserted.begin(), inserted.end());
}

Result<void> ApplyEdit(std::vector<std::uint8_t>& bytes, StreamEdit& edit) {
  const Fit fit = FitOf(edit, bytes.size());
  if (!fit.Fits) {
    return DoesNotFit();
  }
  if (fit.KeepsLengths) {
    SwapBytes(bytes, edit);
  } else {
    bytes = Spliced(bytes, edit, fit, 0);
  }
  return {};
}

}  // namespace quillmark
