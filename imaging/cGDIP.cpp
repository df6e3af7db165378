#include "imaging/cGDIP.h"

#include <array>
#include <cstddef>

#include "base/Words.h"

namespace quillmark {
namespace {

// Element i is the text of status i + 1.
constexpr std::array<const char*, 20> StatusTexts = {
    Words::Mark("Generic Error"),
    Words::Mark("Invalid Parameter"),
    Words::Mark("Out Of Memory"),
    Words::Mark("Object Busy"),
    Words::Mark("Insufficient Buffer"),
    Words::Mark("Not Implemented"),
    Words::Mark("Win32 Error"),
    Words::Mark("Wrong State"),
    Words::Mark("Aborted"),
    Words::Mark("File Not Found"),
    Words::Mark("Value Overflow"),
    Words::Mark("Access Denied"),
    Words::Mark("Unknown Image Format"),
    Words::Mark("FontFamily Not Found"),
    Words::Mark("FontStyle Not Found"),
    Words::Mark("Not TrueType Font"),
    Words::Mark("Unsupported Gdiplus Version"),
    Words::Mark("Gdiplus Not Initialized"),
    Words::Mark("Property Not Found"),
    Words::Mark("Property Not Supported"),
};

}  // namespace

void cGDIP::ReportError(int status, const QString& source) const {
  if (onError_) {
    onError_(source, status, StatusText(status));
  }
}

QString cGDIP::StatusText(int status) {
  const bool known = status >= 1 && static_cast<std::size_t>(status) <= StatusTexts.size();
  return QString::fromStdString(known ? Words::Tr(StatusTexts.at(static_cast<std::size_t>(status) - 1))
                                      : Words::Tr("Unknown GDI+ Error"));
}

}  // namespace quillmark
