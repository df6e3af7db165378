#pragma once

#include <functional>

#include <QString>

namespace quillmark {

/// Status numbers of the imaging operations.
enum class ImagingStatus : int {
  Ok = 0,
  GenericError = 1,
  InvalidParameter = 2,
  OutOfMemory = 3,
  FileSystemError = 7,  // "Win32 Error"
  WrongState = 8,
  FileNotFound = 10,
  AccessDenied = 12,
  UnknownImageFormat = 13,
};

/// The imaging library's instance: where bitmaps and surfaces report their failures to. Operations never
/// interrupt their caller; a failure only raises the instance's error event.
class cGDIP {
 public:
  /// Source class name, status number, status text.
  using ErrorEvent = std::function<void(const QString& source, int status, const QString& text)>;

  explicit cGDIP(ErrorEvent onError = {}) : onError_(std::move(onError)) {}

  /// Raises the error event with the status's text.
  void ReportError(int status, const QString& source) const;
  [[nodiscard]] static QString StatusText(int status);

 private:
  ErrorEvent onError_;
};

}  // namespace quillmark
