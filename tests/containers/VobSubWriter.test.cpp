#include "containers/VobSubWriter.h"

#include <gmock/gmock.h>

#include <gtest/gtest.h>

#include "base/FilePath.h"
#include "containers/VobSub.h"
#include "tests/containers/PackBuilder.h"
#include "tests/support/FolderTest.h"

namespace quillmark {
namespace {

using test::Bytes;
using test::Join;
using test::SoundUnit;
using test::SupPacket;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

TEST(VobSubPaths, OfEitherFile) {
  EXPECT_EQ(VobSubPathsOf("b/film.idx").Packs, "b/film.sub");
  EXPECT_EQ(VobSubPathsOf("b/film.sub").Index, "b/film.idx");
  EXPECT_EQ(VobSubPathsOf("FILM.IDX").Packs, "FILM.SUB");
  EXPECT_EQ(VobSubPathsOf("FILM.SUB").Index, "FILM.IDX");
}

TEST(VobSubPaths, OtherNameGetsBothEndings) {
  EXPECT_EQ(VobSubPathsOf("film.1").Index, "film.1.idx");
  EXPECT_EQ(VobSubPathsOf("film.1").Packs, "film.1.sub");
}

class VobSubWriter : public test::FolderTest {
 protected:
  [[nodiscard]] std::filesystem::path Index() const { return PathFromUtf8(Path("film.idx").toStdString()); }

  [[nodiscard]] Result<Completion> Write(const std::vector<VobSubTrack>& tracks,
                                         const Progress& progress = {}) const {
    return WriteVobSub(Index(), tracks, {}, progress);
  }
  [[nodiscard]] Result<Completion> Write(const Bytes& packets) const {
    return Write({{.Packets = packets, .Language = "en", .Name = {}}});
  }
  [[nodiscard]] Container Again() const {
    auto read = ReadVobSub(Index());
    return read && *read ? std::move(**read) : Container();
  }
  /// The folder is made while the packs are written.
  void WriteWithAFolderInTheIndexsPlace() const {
    VobSubOptions options;
    options.Existing = Overwriting::Allowed;
    const Bytes packets = SupPacket(0, SoundUnit());
    const auto written = WriteVobSub(Index(), {{.Packets = packets, .Language = {}, .Name = {}}}, options,
                                     [this](std::uint64_t /*done*/, std::uint64_t /*of*/) {
                                       QDir(Folder()).mkdir(QStringLiteral("film.idx"));
                                       return true;
                                     });
    EXPECT_THAT(written.Reason(), HasSubstr("film.idx: "));
  }
};

TEST_F(VobSubWriter, LongFilmIsReadAgainToItsEnd) {
  // 1.4 MB, of which a MiB is written at once: each unit has a pack of 2048 bytes of its own.
  Bytes packets;
  for (int i = 0; i < 700; ++i) {
    const Bytes packet = SupPacket(90000 * i, SoundUnit());
    packets.insert(packets.end(), packet.begin(), packet.end());
  }
  ASSERT_TRUE(Write(packets));
  const Container container = Again();
  ASSERT_EQ(container.Tracks.size(), 1U);
  EXPECT_EQ(container.Tracks[0].Packets, packets);
  EXPECT_THAT(container.Tracks[0].Notes, IsEmpty());
}

TEST_F(VobSubWriter, WhatIsReadAgainIsTheSameToTheTick) {
  const Bytes packets =
      Join({SupPacket(0, SoundUnit()), SupPacket(90089, SoundUnit(2013)),
            SupPacket(123456789, SoundUnit(2019 + 2024)), SupPacket(8589934591, SoundUnit(65535))});
  ASSERT_TRUE(Write(packets));
  const Container container = Again();
  ASSERT_EQ(container.Tracks.size(), 1U);
  EXPECT_EQ(container.Tracks[0].Packets, packets);
  EXPECT_EQ(container.Tracks[0].Language, "en");
  EXPECT_EQ(container.Tracks[0].Palette, StartUpPalette);
  EXPECT_THAT(container.Tracks[0].Notes, IsEmpty());
}

TEST_F(VobSubWriter, FrameIsThatOf576LinesUnlessSaid) {
  ASSERT_TRUE(Write(SupPacket(0, SoundUnit())));
  EXPECT_THAT(Read("film.idx"), HasSubstr("\nsize: 720x576\n"));
}

TEST_F(VobSubWriter, LanguagesShareTheSubInTheOrderOfTime) {
  const Bytes english = Join({SupPacket(90000, SoundUnit(38, 1)), SupPacket(270000, SoundUnit(38, 2))});
  const Bytes german = SupPacket(180000, SoundUnit(38, 3));
  ASSERT_TRUE(Write({{.Packets = english, .Language = "en", .Name = "Full"},
                     {.Packets = german, .Language = "ger", .Name = {}}}));
  EXPECT_THAT(Read("film.idx"), HasSubstr("\n"
                                          "id: en, index: 0\n"
                                          "alt: Full\n"
                                          "timestamp: 00:00:01:000, filepos: 000000000\n"
                                          "timestamp: 00:00:03:000, filepos: 000001000\n"
                                          "\n"
                                          "id: de, index: 1\n"
                                          "timestamp: 00:00:02:000, filepos: 000000800\n"));
  const Container container = Again();
  ASSERT_EQ(container.Tracks.size(), 2U);
  EXPECT_EQ(container.Tracks[0].Packets, english);
  EXPECT_EQ(container.Tracks[1].Packets, german);
}

TEST_F(VobSubWriter, UnsortedSubtitlesAreWrittenInTheOrderOfTime) {
  const Bytes early = SupPacket(90000, SoundUnit(38, 1));
  const Bytes late = SupPacket(180000, SoundUnit(38, 2));
  ASSERT_TRUE(Write(Join({late, early})));
  EXPECT_EQ(Again().Tracks.at(0).Packets, Join({early, late}));
}

TEST_F(VobSubWriter, PacketThatIsCutShortEndsInZeros) {
  Bytes whole = SupPacket(90000, SoundUnit());
  Bytes cut = whole;
  cut.resize(cut.size() - 3);
  std::fill(whole.end() - 3, whole.end(), 0);
  ASSERT_TRUE(Write(cut));
  EXPECT_THAT(Read("film.sub").substr(29, 38), std::string(whole.begin() + 10, whole.end()));
}

TEST_F(VobSubWriter, UnitWithoutControlSequencesComesBack) {
  const Bytes packets =
      Join({SupPacket(90000, {0x00, 0x05, 0x00, 0x90, 0x77}), SupPacket(180000, SoundUnit())});
  ASSERT_TRUE(Write(packets));
  EXPECT_EQ(Again().Tracks.at(0).Packets, packets);
}

TEST_F(VobSubWriter, SubtitleBeforeZeroIsNamed) {
  EXPECT_EQ(Write(Join({SupPacket(90000, SoundUnit()), SupPacket(-1, SoundUnit())})).Reason(),
            "subtitle 2 starts before 0, which no .sub can say");
  EXPECT_THAT(Names(), IsEmpty());
}

TEST_F(VobSubWriter, SubtitlePast33BitsIsNamedWithItsStream) {
  const Bytes sound = SupPacket(0, SoundUnit());
  const Bytes late = SupPacket(8589934592, SoundUnit());
  EXPECT_EQ(
      Write({{.Packets = sound, .Language = {}, .Name = {}}, {.Packets = late, .Language = {}, .Name = {}}})
          .Reason(),
      "stream 2, subtitle 1 starts after 26:30:43, which no .sub can say");
}

TEST_F(VobSubWriter, SubtitleWithoutAUnitIsNamed) {
  EXPECT_EQ(Write(SupPacket(0, {0x00, 0x02, 0x00, 0x00})).Reason(),
            "subtitle 1 has no unit: its size field is 2");
}

TEST_F(VobSubWriter, LostSignatureIsNamed) {
  EXPECT_EQ(Write(Join({SupPacket(0, SoundUnit()), Bytes(20, 0x11)})).Reason(),
            "no signature stands at subtitle 2");
}

TEST_F(VobSubWriter, MoreLanguagesThanThereAreSubstreams) {
  const Bytes sound = SupPacket(0, SoundUnit());
  EXPECT_EQ(Write(std::vector<VobSubTrack>(33, {.Packets = sound, .Language = {}, .Name = {}})).Reason(),
            "a VobSub pair has 1 to 32 languages");
}

TEST_F(VobSubWriter, CancelledWorkLeavesNothing) {
  const Bytes packets = SupPacket(0, SoundUnit());
  const auto written = Write({{.Packets = packets, .Language = {}, .Name = {}}},
                             [](std::uint64_t, std::uint64_t) { return false; });
  ASSERT_TRUE(written);
  EXPECT_EQ(*written, Completion::Cancelled);
  EXPECT_THAT(Names(), IsEmpty());
}

TEST_F(VobSubWriter, ProgressCountsBytesOfUnits) {
  const Bytes packets = Join({SupPacket(0, SoundUnit(38)), SupPacket(1, SoundUnit(40))});
  std::vector<std::uint64_t> told;
  ASSERT_TRUE(Write({{.Packets = packets, .Language = {}, .Name = {}}},
                    [&told](std::uint64_t done, std::uint64_t of) {
                      told = {done, of};
                      return true;
                    }));
  EXPECT_THAT(told, ElementsAre(78U, 78U));
}

TEST_F(VobSubWriter, FilesThatAreThereStayUnlessTheyMayGo) {
  Put("film.sub", "old");
  const Bytes packets = SupPacket(0, SoundUnit());
  EXPECT_THAT(Write(packets).Reason(), HasSubstr("already there: "));
  EXPECT_THAT(Names(), ElementsAre("film.sub"));
  EXPECT_EQ(Read("film.sub"), "old");
  VobSubOptions options;
  options.Existing = Overwriting::Allowed;
  ASSERT_TRUE(WriteVobSub(Index(), {{.Packets = packets, .Language = {}, .Name = {}}}, options));
  EXPECT_EQ(Read("film.sub").size(), 2048U);
  EXPECT_THAT(Names(), ElementsAre("film.idx", "film.sub"));
}

TEST_F(VobSubWriter, IndexThatCannotBeWrittenLeavesNoSub) {
  ASSERT_TRUE(QDir(Folder()).mkdir(QStringLiteral("film.idx")));
  VobSubOptions options;
  options.Existing = Overwriting::Allowed;
  const Bytes packets = SupPacket(0, SoundUnit());
  EXPECT_THAT(WriteVobSub(Index(), {{.Packets = packets, .Language = {}, .Name = {}}}, options).Reason(),
              HasSubstr("film.idx: "));
  EXPECT_THAT(Names(), ElementsAre("film.idx"));
}

TEST_F(VobSubWriter, IndexThatCannotTakeItsPlaceLeavesTheOldSub) {
  Put("film.sub", "old");
  WriteWithAFolderInTheIndexsPlace();
  EXPECT_EQ(Read("film.sub"), "old");
  EXPECT_THAT(Names(), ElementsAre("film.idx", "film.sub"));
}

TEST_F(VobSubWriter, IndexThatCannotTakeItsPlaceLeavesNoSubWhereNoneWas) {
  WriteWithAFolderInTheIndexsPlace();
  EXPECT_THAT(Names(), ElementsAre("film.idx"));
}

/// What mkvextract wrote, read and written again, is what it wrote.
TEST_F(VobSubWriter, PacksAreThoseOfMkvextract) {
  for (const char* name : {"film", "film2"}) {
    const QString source = QStringLiteral(QUILLMARK_TEST_DATA "/containers/") + QLatin1String(name);
    const auto read = ReadVobSub(PathFromUtf8((source + QStringLiteral(".idx")).toStdString()));
    ASSERT_TRUE(read && *read);
    VobSubOptions options;
    options.Existing = Overwriting::Allowed;
    ASSERT_TRUE(WriteVobSub(Index(), {{.Packets = (*read)->Tracks.at(0).Packets, .Language = {}, .Name = {}}},
                            options));
    QFile packs(source + QStringLiteral(".sub"));
    ASSERT_TRUE(packs.open(QIODevice::ReadOnly));
    EXPECT_EQ(Read("film.sub"), packs.readAll().toStdString()) << name;
  }
}

TEST_F(VobSubWriter, NoLanguageIsRefused) {
  EXPECT_EQ(Write(std::vector<VobSubTrack>()).Reason(), "a VobSub pair has 1 to 32 languages");
}

TEST(ChangesInVobSub, EndAtALostSignature) {
  const Bytes packets = Join({SupPacket(9, SoundUnit()), Bytes(20, 0x11)});
  EXPECT_THAT(ChangesInVobSub({.Packets = packets, .Language = {}, .Name = {}}), IsEmpty());
}

TEST(ChangesInVobSub, SubtitleOfItsHeadsAloneIsCutShort) {
  Bytes packets = SupPacket(9, SoundUnit());
  packets.resize(14);
  EXPECT_THAT(ChangesInVobSub({.Packets = packets, .Language = {}, .Name = {}}),
              ElementsAre(testing::StartsWith("subtitle 1 is cut short")));
}

TEST(ChangesInVobSub, TimesInTheirOrderMayBeTheSame) {
  const auto changes = [](std::int64_t first, std::int64_t second) {
    const Bytes packets = Join({SupPacket(first, SoundUnit()), SupPacket(second, SoundUnit())});
    return ChangesInVobSub({.Packets = packets, .Language = {}, .Name = {}});
  };
  EXPECT_THAT(changes(9, 9), IsEmpty());
  EXPECT_THAT(changes(9, 8), ElementsAre("the subtitles are not in the order of time; they were sorted"));
}

}  // namespace
}  // namespace quillmark
