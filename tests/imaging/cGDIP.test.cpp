#include "imaging/cGDIP.h"

#include <gmock/gmock.h>
#include <utility>

#include <gtest/gtest.h>

#include "tests/imaging/ErrorLog.h"

namespace quillmark {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class StatusText : public testing::TestWithParam<std::pair<int, const char*>> {};

TEST_P(StatusText, NamesTheStatus) {
  EXPECT_EQ(cGDIP::StatusText(GetParam().first).toStdString(), GetParam().second);
}

INSTANTIATE_TEST_SUITE_P(
    All, StatusText,
    testing::Values(std::pair{1, "Generic Error"}, std::pair{2, "Invalid Parameter"},
                    std::pair{3, "Out Of Memory"}, std::pair{4, "Object Busy"},
                    std::pair{5, "Insufficient Buffer"}, std::pair{6, "Not Implemented"},
                    std::pair{7, "Win32 Error"}, std::pair{8, "Wrong State"}, std::pair{9, "Aborted"},
                    std::pair{10, "File Not Found"}, std::pair{11, "Value Overflow"},
                    std::pair{12, "Access Denied"}, std::pair{13, "Unknown Image Format"},
                    std::pair{14, "FontFamily Not Found"}, std::pair{15, "FontStyle Not Found"},
                    std::pair{16, "Not TrueType Font"}, std::pair{17, "Unsupported Gdiplus Version"},
                    std::pair{18, "Gdiplus Not Initialized"}, std::pair{19, "Property Not Found"},
                    std::pair{20, "Property Not Supported"}, std::pair{0, "Unknown GDI+ Error"},
                    std::pair{-1, "Unknown GDI+ Error"}, std::pair{21, "Unknown GDI+ Error"},
                    std::pair{2147483647, "Unknown GDI+ Error"},
                    std::pair{-2147483647 - 1, "Unknown GDI+ Error"}));

TEST(ReportError, RaisesTheEventWithSourceStatusAndText) {
  const ErrorLog log;
  log.Instance.ReportError(13, "cBitmap");
  EXPECT_THAT(log.Errors, ElementsAre(ReportedError{"cBitmap", 13, "Unknown Image Format"}));
}

TEST(ReportError, StatusBeyondTheTableIsReportedAsUnknown) {
  const ErrorLog log;
  log.Instance.ReportError(21, "cFont");
  EXPECT_THAT(log.Errors, ElementsAre(ReportedError{"cFont", 21, "Unknown GDI+ Error"}));
}

TEST(ReportError, WithoutAnEventItReachesNobody) {
  const ErrorLog log;
  cGDIP().ReportError(1, "cBitmap");
  EXPECT_THAT(log.Errors, IsEmpty());
}

}  // namespace
}  // namespace quillmark
