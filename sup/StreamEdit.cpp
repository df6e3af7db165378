#include "sup/StreamEdit.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <new>
#include <type_traits>
#include <utility>

#include "base/Prefetch.h"
#include "base/Words.h"
#include "sup/StreamLoader.h"

namespace quillmark {
namespace {

using Place = StreamEdit::Place;

constexpr std::size_t MaxPlaceNumber = std::numeric_limits<std::uint32_t>::max();

/// How an edit and a stream fit.
struct Fit {
  bool Fits = false;
  bool KeepsLengths = true;   ///< every place takes out as much as it puts in
  std::uint64_t Removed = 0;  ///< all that is taken out
  std::uint64_t Inserted = 0;
  std::size_t NewLength = 0;
};

/// Of places that each keep their length. They are gone through to the end, without a branch at each.
bool Ascend(std::span<const std::uint32_t> offsets, std::span<const std::uint8_t> counts, std::size_t length,
            std::uint64_t& removed) {
  std::uint64_t end = 0;  // of the place before
  bool ascend = true;
  for (std::size_t i = 0; i < offsets.size(); ++i) {
    ascend &= offsets[i] >= end;
    end = std::uint64_t{offsets[i]} + counts[i];
    removed += counts[i];
  }
  return ascend && end <= length;
}

bool Ascend(const EditPlaces& places, std::size_t length, Fit& fit) {
  std::uint64_t end = 0;  // of the place before
  for (const Place& place : places) {
    if (place.Offset < end) {
      return false;
    }
    end = std::uint64_t{place.Offset} + place.Removed;
    fit.Inserted += place.Inserted;
    fit.Removed += place.Removed;
    fit.KeepsLengths &= place.Removed == place.Inserted;
  }
  return end <= length;
}

Fit FitOf(const StreamEdit& edit, std::size_t length) {
  Fit fit;
  if (edit.Places.AreShort()) {
    fit.Fits = Ascend(edit.Places.Offsets(), edit.Places.Counts(), length, fit.Removed);
    fit.Inserted = fit.Removed;
  } else {
    fit.Fits = Ascend(edit.Places, length, fit);
  }
  fit.NewLength = static_cast<std::size_t>(length - fit.Removed + fit.Inserted);
  fit.Fits = fit.Fits && fit.Inserted == edit.Bytes.size() && fit.NewLength <= MaxStreamLength;
  return fit;
}

/// The places of an edit of all subtitles lie pages apart, so each costs a wait for the memory unless it is
/// asked for this many places ahead.
constexpr std::size_t PlacesAhead = 32;

/// What Set for all writes into a unit whose commands stand one after the other.
constexpr std::uint8_t BothCodes = 5;

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

/// Short places, of lengths that `countOf` gives and that the compiler may know.
template <typename CountOf>
void SwapPlaces(std::uint8_t* start, StreamEdit& edit, const CountOf& countOf) {
  std::uint8_t* other = edit.Bytes.data();
  const auto offsets = edit.Places.Offsets();
  for (std::size_t i = 0; i < offsets.size(); ++i) {
    PrefetchForWriting(start + offsets[std::min(i + PlacesAhead, offsets.size() - 1)]);
    const std::size_t count = countOf(i);
    SwapPlace(start + offsets[i], other, count);
    other += count;
  }
}

void SwapShortPlaces(std::uint8_t* start, StreamEdit& edit) {
  const auto swapAllOf = [&]<std::uint8_t Count>(std::integral_constant<std::uint8_t, Count> /*count*/) {
    SwapPlaces(start, edit, [](std::size_t /*place*/) { return std::size_t{Count}; });
  };
  const auto counts = edit.Places.Counts();
  const auto areAll = [counts](std::uint8_t count) {
    return std::ranges::all_of(counts, [count](std::uint8_t other) { return other == count; });
  };
  if (areAll(1)) {
    swapAllOf(std::integral_constant<std::uint8_t, 1>());
  } else if (areAll(2)) {
    swapAllOf(std::integral_constant<std::uint8_t, 2>());
  } else if (areAll(BothCodes)) {
    swapAllOf(std::integral_constant<std::uint8_t, BothCodes>());
  } else {
    SwapPlaces(start, edit, [counts](std::size_t place) { return std::size_t{counts[place]}; });
  }
}

void SwapBytes(std::span<std::uint8_t> bytes, StreamEdit& edit) {
  if (edit.Places.AreShort()) {
    SwapShortPlaces(bytes.data(), edit);
    return;
  }
  std::uint8_t* other = edit.Bytes.data();
  for (const Place& place : edit.Places) {
    std::swap_ranges(other, other + place.Inserted, bytes.data() + place.Offset);
    other += place.Inserted;
  }
}

void CopyRemoved(std::span<const std::uint8_t> bytes, const EditPlaces& places,
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
void MoveStretches(std::span<std::uint8_t> bytes, const EditPlaces& places, std::size_t length) {
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
  for (std::size_t i = 0; i < edit.Places.size(); ++i) {
    Place place = edit.Places[i];
    place.Offset = static_cast<std::uint32_t>(place.Offset + shift);
    shift += std::int64_t{place.Inserted} - place.Removed;
    std::ranges::copy(inserted.first(place.Inserted), bytes.begin() + place.Offset);
    inserted = inserted.subspan(place.Inserted);
    std::swap(place.Removed, place.Inserted);
    edit.Places.Set(i, place);
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
  return {Words::Tr("the change does not fit the stream")};
}

/// Has memory for what Splice needs.
Result<void> MakeRoom(std::vector<std::uint8_t>& bytes, std::size_t length,
                      std::vector<std::uint8_t>& removed, std::size_t removedLength) {
  try {
    removed.resize(removedLength);
    bytes.reserve(length);
    return {};
  } catch (const std::bad_alloc&) {
    return Failure{Words::Tr("there is not enough memory for the change")};
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
    Place last = Places.back();
    if (removed <= MaxPlaceNumber - last.Removed && inserted.size() <= MaxPlaceNumber - last.Inserted) {
      last.Removed += static_cast<std::uint32_t>(removed);
      last.Inserted += static_cast<std::uint32_t>(inserted.size());
      Places.Set(Places.size() - 1, last);
      return;
    }
  }
  const auto number = [](std::size_t value) {
    return static_cast<std::uint32_t>(std::min(value, MaxPlaceNumber));
  };
  Places.Add({.Offset = number(offset), .Removed = number(removed), .Inserted = number(inserted.size())});
}

Result<void> ApplyEdit(std::vector<std::uint8_t>& bytes, StreamEdit& edit) {
  const Fit fit = FitOf(edit, bytes.size());
  if (!fit.Fits) {
    return DoesNotFit();
  }
  if (fit.KeepsLengths) {
    SwapBytes(bytes, edit);
    return {};
  }
  std::vector<std::uint8_t> removed;
  Result<void> room = MakeRoom(bytes, fit.NewLength, removed, fit.Removed);
  if (room) {
    Splice(bytes, edit, removed);
  }
  return room;
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
    SwapBytes(stream.RawBytes, edit);
    if (!edit.Reindexes) {
      return {};
    }
    Result<void> indexed = Reindex(stream);
    if (!indexed) {
      SwapBytes(stream.RawBytes, edit);
    }
    return indexed;
  }
  std::vector<std::uint8_t> removed;
  if (Result<void> room = MakeRoom(stream.RawBytes, fit.NewLength + 1, removed, fit.Removed); !room) {
    return room;
  }
  Splice(stream.RawBytes, edit, removed);
  Result<void> indexed = Reindex(stream);
  if (!indexed) {
    Splice(stream.RawBytes, edit, removed);
  }
  return indexed;
}

}  // namespace quillmark
