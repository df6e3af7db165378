#pragma once

#include <optional>
#include <string>
#include <utility>

namespace quillmark {

/// Why something could not be done, in words for the user and in UTF-8, without the name of the file that it
/// is about: who tells the user knows that name.
struct Failure {
  std::string Reason;
};

/// A value, or the Failure that stands in its place. `Result<void>` has no value: it was done, or it was not.
template <typename T>
class [[nodiscard]] Result {
 public:
  Result(T value) : value_(std::move(value)) {}                    // NOLINT(google-explicit-constructor)
  Result(Failure failure) : reason_(std::move(failure.Reason)) {}  // NOLINT(google-explicit-constructor)

  [[nodiscard]] bool IsOk() const { return value_.has_value(); }
  explicit operator bool() const { return IsOk(); }

  /// Only of a result that is one.
  [[nodiscard]] T& operator*() { return *value_; }
  [[nodiscard]] const T& operator*() const { return *value_; }
  [[nodiscard]] T* operator->() { return &*value_; }
  [[nodiscard]] const T* operator->() const { return &*value_; }

  /// Empty where there is a value.
  [[nodiscard]] const std::string& Reason() const { return reason_; }
  [[nodiscard]] Failure Why() const { return {reason_}; }

 private:
  std::optional<T> value_;
  std::string reason_;  // invariant: empty while there is a value
};

template <>
class [[nodiscard]] Result<void> {
 public:
  Result() = default;
  Result(Failure failure) : failure_(std::move(failure)) {}  // NOLINT(google-explicit-constructor)

  [[nodiscard]] bool IsOk() const { return !failure_; }
  explicit operator bool() const { return IsOk(); }

  /// Empty when it was done.
  [[nodiscard]] std::string Reason() const { return failure_ ? failure_->Reason : std::string(); }
  [[nodiscard]] Failure Why() const { return {Reason()}; }

 private:
  std::optional<Failure> failure_;
};

}  // namespace quillmark
