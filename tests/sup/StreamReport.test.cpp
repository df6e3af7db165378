#include "sup/StreamReport.h"

#include <gtest/gtest.h>

#include "sup/StreamLoader.h"
#include "tests/support/LoadedStream.h"
#include "tests/support/PacketBuilder.h"

namespace quillmark {
namespace {

using test::Bytes;
using test::Index;
using test::Join;
using test::PacketBuilder;

const std::string EmptyReport =
    "Found Subtitles: 0\r\n"
    "Parse errors: 0\r\n"
    "Max subtitle width: -1 (10000 to 9998)\r\n"
    "Max subtitle height: -1 (10000 to 9998)\r\n"
    "Max size (kb): 0\r\n"
    "First timecode: \r\n"
    "Last timecode: \r\n"
    "Max duration (seconds): -.00\r\n"
    "Subtitles without duration : No\r\n"
    "Color 1 uses palette color:   and opacity: \r\n"
    "Color 2 uses palette color:   and opacity: \r\n"
    "Color 3 uses palette color:   and opacity: \r\n"
    "Color 4 uses palette color:   and opacity: \r\n";

TEST(PrimaryReport, EmptyStream) {
  EXPECT_EQ(PrimaryReport(Index({})), EmptyReport);
}

TEST(PrimaryReport, FileShorterThanAPacketHeader) {
  EXPECT_EQ(PrimaryReport(Index(Bytes(13, 'S'))), EmptyReport);
}

TEST(PrimaryReport, AllLines) {
  const SupStream stream =
      Index(Join({PacketBuilder().Time(5893200).Delay(100).Area(100, 299, 400, 439).Build(),
                  PacketBuilder().Time(90000000).Colour(4, 3, 10, 0).Contrast(15, 8, 15, 2).Build(),
                  PacketBuilder().Time(123456789).WithoutArea().Build()}));

  EXPECT_EQ(PrimaryReport(stream),
            "Found Subtitles: 3\r\n"
            "Parse errors: 1\r\n"
            "Max subtitle width: 200 (100 to 299)\r\n"
            "Max subtitle height: 40 (400 to 439)\r\n"
            "Max size (kb): 0\r\n"
            "First timecode: 00:01:05.48\r\n"
            "Last timecode: 00:22:51.74\r\n"
            "Max duration (seconds): 1.12\r\n"
            "Subtitles without duration : Yes\r\n"
            "Color 1 uses palette color: 0  and opacity: 0, 2\r\n"
            "Color 2 uses palette color: 1, A  and opacity: F\r\n"
            "Color 3 uses palette color: 2, 3  and opacity: 8, F\r\n"
            "Color 4 uses palette color: 3, 4  and opacity: F\r\n");
}

TEST(PrimaryReport, AllUnitsInvalid) {
  const SupStream stream = Index(Join({PacketBuilder().Time(0).WithoutColour().Build(),
                                       PacketBuilder().Time(90000).ControlOffset(0).Build()}));

  EXPECT_EQ(PrimaryReport(stream),
            "Found Subtitles: 2\r\n"
            "Parse errors: 2\r\n"
            "Max subtitle width: -1 (10000 to 9998)\r\n"
            "Max subtitle height: -1 (10000 to 9998)\r\n"
            "Max size (kb): 0\r\n"
            "First timecode: 00:00:00.00\r\n"
            "Last timecode: 00:00:01.00\r\n"
            "Max duration (seconds): -.00\r\n"
            "Subtitles without duration : No\r\n"
            "Color 1 uses palette color:   and opacity: \r\n"
            "Color 2 uses palette color:   and opacity: \r\n"
            "Color 3 uses palette color:   and opacity: \r\n"
            "Color 4 uses palette color:   and opacity: \r\n");
}

TEST(PrimaryReport, DurationBelowASecondHasNoDigitBeforeThePoint) {
  const std::string report = PrimaryReport(Index(PacketBuilder().Delay(45).Build()));

  EXPECT_NE(report.find("Max duration (seconds): .51\r\n"), std::string::npos) << report;  // 505 ms
}

TEST(PrimaryReport, SizeIsInWholeThousandsOfBytes) {
  const auto sizeLine = [](std::int32_t size) {
    SupStream stream;
    stream.Stats.MaxSpuSize = size;
    const std::string report = PrimaryReport(stream);
    const std::size_t start = report.find("Max size");
    return report.substr(start, report.find('\r', start) - start);
  };

  EXPECT_EQ(sizeLine(-1), "Max size (kb): 0");
  EXPECT_EQ(sizeLine(999), "Max size (kb): 0");
  EXPECT_EQ(sizeLine(1000), "Max size (kb): 1");
  EXPECT_EQ(sizeLine(1999), "Max size (kb): 1");
  EXPECT_EQ(sizeLine(32767), "Max size (kb): 32");
}

TEST(PrimaryReport, SeveralColoursGiveNoWarning) {
  const SupStream stream =
      Index(Join({PacketBuilder().Build(), PacketBuilder().Colour(9, 9, 9, 9).Contrast(1, 1, 1, 1).Build()}));

  EXPECT_EQ(PrimaryReport(stream).find("Warning"), std::string::npos);
}

TEST(UsageList, HoldsEveryUsedRowInOrder) {
  SupStreamStats stats;
  stats.Usage[0][3] = 1;
  stats.Usage[9][3] = 1;
  stats.Usage[10][3] = 1;
  stats.Usage[15][3] = 1;
  stats.Usage[7][4] = 1;

  EXPECT_EQ(UsageList(stats, 3), "0, 9, A, F");
  EXPECT_EQ(UsageList(stats, 4), "7");
  EXPECT_EQ(UsageList(stats, 5), "");
}

TEST(SecondaryReport, HasItsOwnHeadingAndTheSameLines) {
  const SupStream stream = Index(PacketBuilder().Time(90000).Delay(100).Build());

  EXPECT_EQ(SecondaryReport(stream),
            "Found secondary Subtitles: 1\r\n"
            "Parse errors: 0\r\n"
            "Max subtitle width: 4 (100 to 103)\r\n"
            "Max subtitle height: 2 (400 to 401)\r\n"
            "Max size (kb): 0\r\n"
            "First timecode: 00:00:01.00\r\n"
            "Last timecode: 00:00:01.00\r\n"
            "Max duration (seconds): 1.12\r\n"
            "Subtitles without duration : No\r\n"
            "Color 1 uses palette color: 0  and opacity: 0\r\n"
            "Color 2 uses palette color: 1  and opacity: F\r\n"
            "Color 3 uses palette color: 2  and opacity: F\r\n"
            "Color 4 uses palette color: 3  and opacity: F\r\n");
}

const std::string Warning =
    "\r\nWarning: Secondary subtitles have multiple colors or multiple transparancies"
    "\r\nOverlaying may not work properly";

TEST(SecondaryReport, SeveralColoursAppendTheWarning) {
  const SupStream stream = Index(Join({PacketBuilder().Build(), PacketBuilder().Colour(3, 2, 1, 9).Build()}));

  const std::string report = SecondaryReport(stream);

  EXPECT_TRUE(report.ends_with("Color 4 uses palette color: 3  and opacity: F\r\n" + Warning)) << report;
}

TEST(SecondaryReport, SeveralOpacitiesAppendTheWarning) {
  const SupStream stream =
      Index(Join({PacketBuilder().Build(), PacketBuilder().Contrast(15, 15, 15, 1).Build()}));

  const std::string report = SecondaryReport(stream);

  EXPECT_TRUE(report.ends_with("Color 4 uses palette color: 3  and opacity: F\r\n" + Warning)) << report;
}

}  // namespace
}  // namespace quillmark
