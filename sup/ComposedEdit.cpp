#include "sup/ComposedEdit.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace quillmark {
namespace {

/// Writes an edit from the start of the old bytes to their end.
class EditWriter {
 public:
  void Keep(std::size_t count) {
    if (count > 0) {
      Flush();
      old_ += count;
    }
  }
  void Remove(std::size_t count) { removed_ += count; }
  void Insert(std::span<const std::uint8_t> bytes) {
    inserted_.insert(inserted_.end(), bytes.begin(), bytes.end());
  }

  StreamEdit Finish() {
    Flush();
    return std::move(edit_);
  }

 private:
  void Flush() {
    if (removed_ > 0 || !inserted_.empty()) {
      edit_.Replace(old_, removed_, inserted_);
    }
    old_ += std::exchange(removed_, 0);
    inserted_.clear();
  }

  StreamEdit edit_;
  std::size_t old_ = 0;  // after what was kept
  std::size_t removed_ = 0;
  std::vector<std::uint8_t> inserted_;
};

/// The bytes that an edit leaves, gone through from their start.
class EditedBytes {
 public:
  EditedBytes(const StreamEdit& edit, EditWriter& out) : edit_(edit), out_(out) { EnterPlace(); }

  /// The next `count` bytes stay.
  void Keep(std::size_t count) {
    Pass(
        count, [&](std::size_t old) { out_.Keep(old); },
        [&](std::span<const std::uint8_t> fresh) { out_.Insert(fresh); });
  }
  /// The next `count` bytes go.
  void Remove(std::size_t count) {
    Pass(
        count, [&](std::size_t old) { out_.Remove(old); }, [](std::span<const std::uint8_t> /*fresh*/) {});
  }
  /// All that is left of the edit happens.
  void KeepRest() {
    while (place_ < edit_.Places.size()) {
      Keep(kept_ + fresh_.size());
    }
  }

 private:
  /// Goes on to the next place that anything lies before, or that puts something in.
  void EnterPlace() {
    for (; place_ < edit_.Places.size(); LeavePlace()) {
      const EditPlace next = edit_.Places[place_];
      kept_ = next.Offset - old_;
      fresh_ = std::span(edit_.Bytes).subspan(bytes_, next.Inserted);
      if (kept_ > 0 || !fresh_.empty()) {
        return;
      }
    }
    kept_ = std::numeric_limits<std::size_t>::max();
    fresh_ = {};
  }

  /// Once the bytes before a place and those that it puts in are passed, what it takes out is.
  void LeavePlace() {
    const EditPlace place = edit_.Places[place_++];
    out_.Remove(place.Removed);
    old_ = std::size_t{place.Offset} + place.Removed;
    bytes_ += place.Inserted;
  }

  template <typename PassOld, typename PassFresh>
  void Pass(std::size_t count, const PassOld& passOld, const PassFresh& passFresh) {
    while (true) {
      const std::size_t old = std::min(count, kept_);
      if (old > 0) {
        passOld(old);
        kept_ -= place_ < edit_.Places.size() ? old : 0;
        count -= old;
      }
      const std::size_t fresh = kept_ == 0 ? std::min(count, fresh_.size()) : 0;
      if (fresh > 0) {
        passFresh(fresh_.first(fresh));
        fresh_ = fresh_.subspan(fresh);
        count -= fresh;
      }
      if (kept_ == 0 && fresh_.empty()) {
        LeavePlace();
        EnterPlace();
      }
      if (count == 0) {
        return;
      }
    }
  }

  const StreamEdit& edit_;
  EditWriter& out_;
  std::size_t place_ = 0;  // the next one, or the one whose bytes are passed
  std::size_t old_ = 0;    // where the place before ended
  std::size_t bytes_ = 0;  // of edit_.Bytes that earlier places put in
  std::size_t kept_ = 0;   // old bytes to pass before the next place
  std::span<const std::uint8_t> fresh_;
};

}  // namespace

StreamEdit ComposedEdit(const StreamEdit& first, const StreamEdit& second) {
  EditWriter out;
  EditedBytes bytes(first, out);
  std::size_t at = 0;  // of the bytes between the edits
  std::size_t inserted = 0;
  for (const StreamEdit::Place& place : second.Places) {
    bytes.Keep(place.Offset - at);
    bytes.Remove(place.Removed);
    out.Insert(std::span(second.Bytes).subspan(inserted, place.Inserted));
    at = std::size_t{place.Offset} + place.Removed;
    inserted += place.Inserted;
  }
  bytes.KeepRest();
  StreamEdit composed = out.Finish();
  composed.Reindexes = first.Reindexes || second.Reindexes;
  return composed;
}

}  // namespace quillmark
