#pragma once

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

#include "files/SystemCalls.h"

namespace quillmark::test {

/// The calls that change what is on the disk.
enum class Call { Open, Write, Reserve, Truncate, Sync, Close, Rename, MakeFolder, Link, Remove };
inline constexpr std::size_t CallKinds = 10;
inline constexpr const char* CallNames[CallKinds] = {"open",  "write",  "reserve",     "truncate", "sync",
                                                     "close", "rename", "make folder", "link",     "remove"};

/// One call of all that a command makes.
struct Fault {
  Call Kind = Call::Open;
  int Number = 1;         ///< of its kind
  std::size_t Taken = 0;  ///< bytes that a write takes first
  bool operator==(const Fault&) const = default;
};

/// Counts the system's calls while it lives, and has one of them fail. What it fails has not happened, but
/// for closing, and for the bytes that a write takes: the disk is full behind them.
class FaultySystem {
 public:
  explicit FaultySystem(std::optional<Fault> fault = std::nullopt) : fault_(fault), calls_(System()) {
    current = this;
    System() = {
        .Open =
            [](const char* path, int flags, unsigned mode) {
              return Fails(Call::Open, EACCES) ? -1 : current->calls_.Open(path, flags, mode);
            },
        .Write = Write,
        .Reserve =
            [](int file, std::int64_t length) {
              return Fails(Call::Reserve, ENOSPC) ? ENOSPC : current->calls_.Reserve(file, length);
            },
        .Truncate =
            [](int file, std::int64_t length) {
              return Fails(Call::Truncate, EIO) ? -1 : current->calls_.Truncate(file, length);
            },
        .Sync = [](int file) { return Fails(Call::Sync, EIO) ? -1 : current->calls_.Sync(file); },
        .Close =
            [](int file) {
              const int answer = current->calls_.Close(file);
              return Fails(Call::Close, EIO) ? -1 : answer;
            },
        .Rename =
            [](const char* from, const char* to) {
              return Fails(Call::Rename, EACCES) ? -1 : current->calls_.Rename(from, to);
            },
        .MakeFolder =
            [](const char* path, unsigned mode) {
              return Fails(Call::MakeFolder, EACCES) ? -1 : current->calls_.MakeFolder(path, mode);
            },
        .Link =
            [](const char* path, const char* name) {
              return Fails(Call::Link, EACCES) ? -1 : current->calls_.Link(path, name);
            },
        .Remove =
            [](const char* path) { return Fails(Call::Remove, EACCES) ? -1 : current->calls_.Remove(path); }};
  }
  ~FaultySystem() {
    System() = calls_;
    current = nullptr;
  }
  FaultySystem(const FaultySystem&) = delete;
  FaultySystem& operator=(const FaultySystem&) = delete;

  /// What could fail of all that was called: every call, and every write also behind some of its bytes: the
  /// first, half of them, all but one; or behind each.
  enum class Writes { AtSomeBytes, AtEachByte };
  [[nodiscard]] std::vector<Fault> Faults(Writes which = Writes::AtSomeBytes) const {
    std::vector<Fault> faults;
    for (std::size_t kind = 0; kind < CallKinds; ++kind) {
      for (int number = 1; number <= counts_[kind]; ++number) {
        faults.push_back({.Kind = static_cast<Call>(kind), .Number = number, .Taken = 0});
      }
    }
    for (std::size_t i = 0; i < writes_.size(); ++i) {
      const std::size_t length = writes_[i];
      for (std::size_t taken = 1; taken < length; ++taken) {
        if (which == Writes::AtEachByte || taken == 1 || taken == length / 2 || taken == length - 1) {
          faults.push_back({.Kind = Call::Write, .Number = static_cast<int>(i) + 1, .Taken = taken});
        }
      }
    }
    return faults;
  }
  [[nodiscard]] bool HasFailed() const { return hasFailed_; }

 private:
  static bool Fails(Call kind, int error) {
    const std::lock_guard lock(current->mutex_);
    return FailsAlone(kind, error);
  }
  static bool FailsAlone(Call kind, int error) {
    int& count = current->counts_[static_cast<std::size_t>(kind)];
    ++count;
    if (!current->fault_ || current->fault_->Kind != kind || current->fault_->Number != count) {
      return false;
    }
    current->hasFailed_ = true;
    errno = error;
    return true;
  }
  static std::ptrdiff_t Write(int file, const void* bytes, std::size_t length) {
    std::size_t taken = length;
    {
      const std::lock_guard lock(current->mutex_);
      current->writes_.push_back(length);
      if (file == current->fullFile_) {
        errno = ENOSPC;
        return -1;
      }
      if (FailsAlone(Call::Write, ENOSPC)) {
        // Pictures are written side by side, so that it may be another one than that which was counted.
        taken = std::min(current->fault_->Taken, length - std::min<std::size_t>(length, 1));
        current->fullFile_ = file;
        if (taken == 0) {
          return -1;
        }
      }
    }
    return current->calls_.Write(file, bytes, taken);
  }

  inline static FaultySystem* current = nullptr;

  std::mutex mutex_;  // of all that follows but the calls
  std::optional<Fault> fault_;
  SystemCalls calls_;
  std::array<int, CallKinds> counts_ = {};
  std::vector<std::size_t> writes_;
  int fullFile_ = -1;
  bool hasFailed_ = false;
};

}  // namespace quillmark::test
