#include "imaging/cGDIP.h"

#include <array>
#include <cstddef>

namespace quillmark {
namespace {

// Element i is the text of status i + 1.
constexpr std::array<const char*, 20> StatusTexts = {
    "Generic Error",
    "Invalid Parameter",
    "Out Of Memory",
    "Object Busy",
    "Insufficient Buffer",
    "Not Implemented",
    "Win32 Error",
    "Wrong State",
    "Aborted",
    "File Not Found",
    "Value Overflow",
    "Access Denied",
    "Unknown Image Format",
    "FontFamily Not Found",
    "FontStyle Not Found",
    "Not TrueType Font",
    "Unsupported Gdiplus Version",
    "Gdiplus Not Initialized",
    "Property Not Found",
    "Property Not Supported",
};

}  // namespace

void cGDIP::ReportError(int status, const QString& source) const {
  if (onError_) {
    onError_(source, status, StatusText(status));
  }
}

QString cGDIP::StatusText(int status) {
  const bool known = status >= 1 && static_cast<std::size_t>(status) <= StatusTexts.size();
  return QString::fromLatin1(known ? StatusTexts.at(static_cast<std::size_t>(status) - 1)
                                   : "Unknown GDI+ Error");
}

}  // namespace quillmark
