#include "sup/StreamEdit.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <new>
#include <type_traits>
#include <utility>

#include "sup/StreamLoader.h"

namespace quillmark {
namespace {

using Place = StreamEdit::Place;

constexpr std::size_t MaxPlaceNumber = std::numeric_limits<std::uint32_t>::max();

/// How an edit and a stream fit.
struct Fit {
  bool Fits = false;
  bool KeepsLengths = true;  ///< every place takes out as much as it puts in
  bool IsEven = true;        ///< and all places are as long as the first one
  std::size_t Removed = 0;   ///< all that is taken out
  std::size_t NewLength = 0;
};

Fit FitOf(const StreamEdit& edit, std::size_t length) {
  Fit fit;
  std::uint64_t end = 0;  // of the place before
  std::uint64_t inserted = 0;
  std::uint64_t removed = 0;
  std::uint32_t differences = 0;  // between what a place takes out and puts in
  std::uint32_t unevenness = 0;
  const std::uint32_t first = edit.Places.empty() ? 0 : edit.Places.front().Removed;
  for (const Place& place : edit.Places) {
    if (place.Offset < end) {
      return {};
    }
    end = std::uint64_t{place.Offset} + place.Removed;
    inserted += place.Inserted;
    removed += place.Removed;
    differences |= place.Removed ^ place.Inserted;
    unevenness |= place.Removed ^ first;
  }
  if (end > length || inserted != edit.Bytes.size()) {
    return {};
  }
  fit.KeepsLengths = differences == 0;
  fit.IsEven = fit.KeepsLengths && unevenness == 0;
  fit.Removed = removed;
  fit.NewLength = length - removed + inserted;
  fit.Fits = fit.NewLength <= MaxStreamLength;
  return fit;
}

/// The places of an edit of all subtitles lie pages apart, so each costs a wait for the memory unless it is
/// asked for this many places ahead.
constexpr std::size_t PlacesAhead = 16;

/// What Set for all writes into a unit whose commands stand one after the other.
constexpr std::uint32_t BothCodes = 5;

void PrefetchForWriting([[maybe_unused]] const std::uint8_t* at) {
#if defined(__GNUC__)
  __builtin_prefetch(at, 1);
#endif
}

template <typename Number>
void SwapNumber(std::uint8_t* a, std::uint8_t* b) {
  Number ofA = 0;
  Number ofB = 0;
  std::memcpy(&ofA, a, sizeof(Number));
  std::memcpy(&ofB, b, sizeof(Number));
  std::memcpy(a, &ofB, sizeof(Number));
  std::memcpy(b, &ofA, sizeof(Number));
}

/// `count` is from the size of a Number to twice that: its first and its last bytes, which may overlap.
template <typename Number>
void SwapNumbers(std::uint8_t* a, std::uint8_t* b, std::size_t count) {
  const std::size_t last = count - sizeof(Number);
  const auto read = [](const std::uint8_t* from) {
    Number number = 0;
    std::memcpy(&number, from, sizeof(number));
    return number;
  };
  const std::array<Number, 2> ofA = {read(a), read(a + last)};
  const std::array<Number, 2> ofB = {read(b), read(b + last)};
  std::memcpy(a, &ofB[0], sizeof(Number));
  std::memcpy(a + last, &ofB[1], sizeof(Number));
  std::memcpy(b, &ofA[0], sizeof(Number));
  std::memcpy(b + last, &ofA[1], sizeof(Number));
}

/// Most places are a number of a unit, of up to 8 bytes.
void SwapPlace(std::uint8_t* a, std::uint8_t* b, std::size_t count) {
  if (count == 1) {
    std::swap(*a, *b);
  } else if (count == 2) {
    SwapNumber<std::uint16_t>(a, b);
  } else if (count == 3) {
    SwapNumbers<std::uint16_t>(a, b, count);
  } else if (count >= 4 && count <= 8) {
    SwapNumbers<std::uint32_t>(a, b, count);
  } else {
    std::swap_ranges(a, a + count, b);
  }
}

/// `countOf` gives a place's length, which the compiler may know.
template <typename CountOf>
void SwapPlaces(std::uint8_t* start, StreamEdit& edit, const CountOf& countOf) {
  std::uint8_t* other = edit.Bytes.data();
  const Place* const first = edit.Places.data();
  const std::size_t places = edit.Places.size();
  for (std::size_t i = 0; i < places; ++i) {
    PrefetchForWriting(start + first[std::min(i + PlacesAhead, places - 1)].Offset);
    const std::size_t count = countOf(first[i]);
    SwapPlace(start + first[i].Offset, other, count);
    other += count;
  }
}

void SwapBytes(std::span<std::uint8_t> bytes, StreamEdit& edit, const Fit& fit) {
  const auto swapAllOf = [&]<std::uint32_t Count>(std::integral_constant<std::uint32_t, Count> /*count*/) {
    SwapPlaces(bytes.data(), edit, [](const Place& /*place*/) { return std::size_t{Count}; });
  };
  const std::uint32_t count = fit.IsEven && !edit.IsEmpty() ? edit.Places.front().Removed : 0;
  if (count == 1) {
    swapAllOf(std::integral_constant<std::uint32_t, 1>());
  } else if (count == 2) {
    swapAllOf(std::integral_constant<std::uint32_t, 2>());
  } else if (count == BothCodes) {
    swapAllOf(std::integral_constant<std::uint32_t, BothCodes>());
  } else {
    SwapPlaces(bytes.data(), edit, [](const Place& place) { return std::size_t{place.Removed}; });
  }
}

void CopyRemoved(std::span<const std::uint8_t> bytes, const std::vector<Place>& places,
                 std::span<std::uint8_t> removed) {
  for (const Place& place : places) {
    std::ranges::copy(bytes.subspan(place.Offset, place.Removed), removed.begin());
    removed = removed.subspan(place.Removed);
  }
}

std::size_t EndOf(const Place& place) {
  return std::size_t{place.Offset} + place.Removed;
}

/// Moves what stands between the places to where it stands after the edit; `bytes` has room for both states,
/// of which the old one has `length` bytes. What moves to the front goes first to last, what moves to the
/// back last to first, so that nothing is overwritten before it has moved: stretches keep their order, and
/// one that moves to the front and one that moves to the back never meet.
void MoveStretches(std::span<std::uint8_t> bytes, const std::vector<Place>& places, std::size_t length) {
  const auto move = [bytes](std::size_t from, std::size_t end, std::int64_t shift) {
    std::memmove(bytes.data() + static_cast<std::int64_t>(from) + shift, bytes.data() + from, end - from);
  };
  const auto growth = [](const Place& place) { return std::int64_t{place.Inserted} - place.Removed; };
  std::int64_t shift = 0;
  for (std::size_t i = 0; i < places.size(); ++i) {
    shift += growth(places[i]);
    if (shift < 0) {
      move(EndOf(places[i]), i + 1 < places.size() ? places[i + 1].Offset : length, shift);
    }
  }
  std::size_t end = length;
  for (std::size_t i = places.size(); i-- > 0;) {
    if (shift > 0) {
      move(EndOf(places[i]), end, shift);
    }
    shift -= growth(places[i]);
    end = places[i].Offset;
  }
}

/// Puts the edit's bytes into their places, which get the numbers of the inverse.
void PutIn(std::span<std::uint8_t> bytes, StreamEdit& edit) {
  std::span<const std::uint8_t> inserted = edit.Bytes;
  std::int64_t shift = 0;
  for (Place& place : edit.Places) {
    place.Offset = static_cast<std::uint32_t>(place.Offset + shift);
    shift += std::int64_t{place.Inserted} - place.Removed;
    std::ranges::copy(inserted.first(place.Inserted), bytes.begin() + place.Offset);
    inserted = inserted.subspan(place.Inserted);
    std::swap(place.Removed, place.Inserted);
  }
}

/// Applies a fitting edit. `removed` is as long as all that the edit takes out, and `bytes` has the capacity
/// for the new length, so that nothing here can fail. Afterwards `removed` is the buffer that the inverse
/// needs. Bytes after the stream's, if there are any, move with its end.
void Splice(std::vector<std::uint8_t>& bytes, StreamEdit& edit, std::vector<std::uint8_t>& removed) {
  const std::size_t length = bytes.size();
  const std::size_t newLength = length - removed.size() + edit.Bytes.size();
  CopyRemoved(bytes, edit.Places, removed);
  bytes.resize(std::max(length, newLength));
  MoveStretches(bytes, edit.Places, length);
  PutIn(bytes, edit);
  bytes.resize(newLength);
  std::swap(edit.Bytes, removed);
}

Failure DoesNotFit() {
  return {"the change does not fit the stream"};
}

Failure NoMemory() {
  return {"there is not enough memory for the change"};
}

/// Whether there is memory for what Splice needs.
bool MakeRoom(std::vector<std::uint8_t>& bytes, std::size_t length, std::vector<std::uint8_t>& removed,
              std::size_t removedLength) {
  try {
    removed.resize(removedLength);
    bytes.reserve(length);
    return true;
  } catch (const std::bad_alloc&) {
    return false;
  }
}

Result<void> Reindex(SupStream& stream) {
  const auto file = std::span(std::as_const(stream.RawBytes)).first(stream.RawBytes.size() - 1);
  Result<SupStream> index =
      IndexStream(file, stream.EndsAtInvalidFirst ? InvalidFirst::EndsTheWalk : InvalidFirst::IsPassed);
  if (!index) {
    return index.Why();
  }
  index->Path = std::move(stream.Path);
  index->RawBytes = std::move(stream.RawBytes);
  stream = std::move(*index);
  return {};
}

}  // namespace

void StreamEdit::Replace(std::size_t offset, std::size_t removed, std::span<const std::uint8_t> inserted) {
  Bytes.insert(Bytes.end(), inserted.begin(), inserted.end());
  if (!Places.empty() && EndOf(Places.back()) == offset) {
    Place& last = Places.back();
    if (removed <= MaxPlaceNumber - last.Removed && inserted.size() <= MaxPlaceNumber - last.Inserted) {
      last.Removed += static_cast<std::uint32_t>(removed);
      last.Inserted += static_cast<std::uint32_t>(inserted.size());
      return;
    }
  }
  const auto number = [](std::size_t value) {
    return static_cast<std::uint32_t>(std::min(value, MaxPlaceNumber));
  };
  Places.push_back(
      {.Offset = number(offset), .Removed = number(removed), .Inserted = number(inserted.size())});
}

Result<void> ApplyEdit(std::vector<std::uint8_t>& bytes, StreamEdit& edit) {
  const Fit fit = FitOf(edit, bytes.size());
  if (!fit.Fits) {
    return DoesNotFit();
  }
  if (fit.KeepsLengths) {
    SwapBytes(bytes, edit, fit);
    return {};
  }
  std::vector<std::uint8_t> removed;
  if (!MakeRoom(bytes, fit.NewLength, removed, fit.Removed)) {
    return NoMemory();
  }
  Splice(bytes, edit, removed);
  return {};
}

Result<void> ApplyEdit(SupStream& stream, StreamEdit& edit) {
  if (stream.RawBytes.empty()) {
    return edit.IsEmpty() ? Result<void>() : DoesNotFit();
  }
  const Fit fit = FitOf(edit, stream.RawBytes.size() - 1);
  if (!fit.Fits) {
    return DoesNotFit();
  }
  if (fit.KeepsLengths) {
    SwapBytes(stream.RawBytes, edit, fit);
    if (!edit.Reindexes) {
      return {};
    }
    Result<void> indexed = Reindex(stream);
    if (!indexed) {
      SwapBytes(stream.RawBytes, edit, fit);
    }
    return indexed;
  }
  std::vector<std::uint8_t> removed;
  if (!MakeRoom(stream.RawBytes, fit.NewLength + 1, removed, fit.Removed)) {
    return NoMemory();
  }
  Splice(stream.RawBytes, edit, removed);
  Result<void> indexed = Reindex(stream);
  if (!indexed) {
    Splice(stream.RawBytes, edit, removed);
  }
  return indexed;
}

}  // namespace quillmark
