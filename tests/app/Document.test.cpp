#include "app/Document.h"

#include <random>

#include <gtest/gtest.h>

#include "tests/app/Streams.h"
#include "tests/support/LoadedStream.h"

namespace quillmark::test {
namespace {

/// Documents are driven here as the window drives them, without a window.
class DocumentTest : public testing::Test {
 protected:
  static SupStream Loaded(const Bytes& bytes) {
    return StreamOf(IndexPrimaryStream(bytes, InvalidFirst::IsPassed));
  }
  static SupStream Second(const Bytes& bytes) {
    SupStream stream = Loaded(bytes);
    stream.EndTime.back() = INT64_MAX;
    stream.LatestEnd = stream.EndTime;
    return stream;
  }
  static Bytes Packets(int count) {
    Bytes bytes;
    for (int i = 0; i < count; ++i) {
      bytes = Join({bytes, PacketBuilder().Time(i * Second_).Delay(50).Build()});
    }
    return bytes;
  }
  void Open(const Bytes& bytes) {
    SupStream stream = Loaded(bytes);
    Opened.BeginLoading();
    Opened.SetSupPath("/films/movie.sup");
    Opened.SetNumber(1);
    Opened.Open(std::move(stream));
    EXPECT_TRUE(Opened.Reset());
  }
  [[nodiscard]] Bytes Stream() const {
    const SupStream& stream = Opened.Primary();
    return {stream.RawBytes.begin(), stream.RawBytes.begin() + stream.FileLength};
  }
  static CodeChoice Choice(std::uint8_t colour, std::uint8_t contrast) {
    return {.Colours = {colour, 1, 2, 3}, .Contrasts = {contrast, 15, 15, 15}};
  }
  static DvdPalette Grey(Rgb level) {
    DvdPalette palette{};
    palette.fill(MakeRgb(level, level, level));
    return palette;
  }

  static constexpr std::int64_t Second_ = 90000;
  Document Opened;
};

TEST_F(DocumentTest, StartsWithoutASubtitle) {
  EXPECT_EQ(Opened.NumberText(), "0");
  EXPECT_FALSE(Opened.HasSubtitle());
  const EnabledCommands enabled = Opened.Enabled();
  EXPECT_TRUE(enabled.Load);
  EXPECT_TRUE(enabled.Editing);
  EXPECT_FALSE(enabled.Save || enabled.Change || enabled.Prev || enabled.Next || enabled.GoTo ||
               enabled.Undo || enabled.Redo);
}

TEST_F(DocumentTest, SettingWithoutAStreamDoesNothing) {
  bool edited = false;
  const auto watch = QObject::connect(&Opened, &Document::AboutToEdit, &Opened, [&edited] { edited = true; });
  const auto shown =
      QObject::connect(&Opened, &Document::PreviewShown, &Opened, [&edited] { edited = true; });
  Opened.Choose(Choice(7, 8));
  EXPECT_TRUE(Opened.SetActual());
  EXPECT_TRUE(Opened.SetAll());
  QObject::disconnect(watch);
  QObject::disconnect(shown);
  EXPECT_FALSE(edited);
  EXPECT_EQ(Opened.History().count(), 0);
}

TEST_F(DocumentTest, StepsEndAtTheFirstAndTheLast) {
  Open(Packets(3));
  EXPECT_TRUE(Opened.Enabled().Next);
  EXPECT_FALSE(Opened.Enabled().Prev);
  EXPECT_TRUE(Opened.Next());
  EXPECT_TRUE(Opened.Enabled().Next && Opened.Enabled().Prev);
  EXPECT_TRUE(Opened.Next());
  EXPECT_EQ(Opened.Number(), 3);
  EXPECT_FALSE(Opened.Enabled().Next);
  EXPECT_TRUE(Opened.GoTo(1));
  EXPECT_FALSE(Opened.Enabled().Prev);
}

TEST_F(DocumentTest, OneSubtitleHasNoSteps) {
  Open(Packets(1));
  EXPECT_FALSE(Opened.Enabled().Next || Opened.Enabled().GoTo);
  EXPECT_TRUE(Opened.Enabled().Change);
}

TEST_F(DocumentTest, FailedConversionIsTheQuestionMarkUntilReset) {
  Open(InvalidSecond());
  EXPECT_FALSE(Opened.Next());
  EXPECT_EQ(Opened.NumberText(), "1");
  Opened.SetFailed();
  EXPECT_EQ(Opened.NumberText(), "?");
  EXPECT_TRUE(Opened.ListsAreInert());
  EXPECT_TRUE(Opened.Reset());
  EXPECT_EQ(Opened.NumberText(), "1");
  EXPECT_TRUE(Opened.ListsAreInert());
  EXPECT_TRUE(Opened.Reset());
  EXPECT_FALSE(Opened.ListsAreInert());
}

TEST_F(DocumentTest, SeventeenSubtitlesLeaveNextDisabledAfterMerging) {
  for (const int count : {16, 17, 18}) {
    Open(Packets(count));
    Opened.BeginMerging(Second(Packets(1)));
    EXPECT_TRUE(Opened.ShowFirstMerged());
    EXPECT_EQ(Opened.NumberText(), "17");
    Opened.SetNumber(1);
    EXPECT_EQ(Opened.Enabled().Next, count != 17) << count;
    EXPECT_TRUE(Opened.Enabled().Prev);
  }
}

TEST_F(DocumentTest, MergingDisablesEditingAndTheHistory) {
  Open(Packets(2));
  ASSERT_TRUE(Opened.SetPalette(Grey(9), "Load Palette"));
  EXPECT_TRUE(Opened.Enabled().Undo);
  Opened.BeginMerging(Second(Packets(1)));
  const EnabledCommands enabled = Opened.Enabled();
  EXPECT_FALSE(enabled.Editing || enabled.Save || enabled.Change || enabled.Undo || enabled.Redo);
  EXPECT_TRUE(enabled.Load && enabled.Next && enabled.GoTo);
  Opened.Undo();
  EXPECT_EQ(Opened.Palette(), Grey(9));
}

TEST_F(DocumentTest, NothingIsEnabledWhileBusy) {
  Open(Packets(2));
  ASSERT_TRUE(Opened.SetPalette(Grey(9), "Load Palette"));
  Opened.SetBusy(true);
  const EnabledCommands busy = Opened.Enabled();
  EXPECT_FALSE(busy.Load || busy.Save || busy.Editing || busy.Change || busy.Prev || busy.Next || busy.GoTo ||
               busy.Undo || busy.Redo);
  Opened.SetBusy(false);
  EXPECT_TRUE(Opened.Enabled().Load && Opened.Enabled().Undo);
}

TEST_F(DocumentTest, LostIndexLeavesTheBytesToSave) {
  Open(Packets(2));
  const Bytes before = Stream();
  Opened.LoseIndex();
  const EnabledCommands enabled = Opened.Enabled();
  EXPECT_TRUE(enabled.Save && enabled.Load);
  EXPECT_FALSE(enabled.Change || enabled.Next || enabled.Prev || enabled.GoTo || enabled.Undo);
  EXPECT_EQ(Stream(), before);
}

TEST_F(DocumentTest, AbandonedLoadTakesNothingAway) {
  Open(Packets(3));
  Opened.BeginMerging(Second(Packets(1)));
  Opened.BeginLoading();
  Opened.AbandonLoading();
  EXPECT_EQ(Opened.Primary().Count, 3);
  EXPECT_EQ(Opened.Secondary().Count, 1);
  EXPECT_TRUE(Opened.IsMerging());
}

TEST_F(DocumentTest, AbandonedLoadLeavesTheUnitOfASplitMergeShown) {
  Open(Packets(3));
  Opened.BeginMerging(Second(Packets(1)));
  DisplayInterval unit{.Start = Second_, .End = 2 * Second_};
  unit.First = 1;
  ASSERT_TRUE(Opened.ShowUnit(unit, 2));
  Opened.BeginLoading();
  Opened.AbandonLoading();
  ASSERT_TRUE(Opened.ShownUnit());
  EXPECT_EQ(Opened.ShownUnit()->Start, Second_);
}

TEST_F(DocumentTest, ChoiceIsAPreviewUntilItIsSet) {
  Open(Packets(2));
  EXPECT_FALSE(Opened.IsPreview());
  Opened.Choose(Choice(7, 3));
  EXPECT_TRUE(Opened.IsPreview());
  EXPECT_EQ(Stream(), Packets(2));
  ASSERT_TRUE(Opened.SetActual());
  EXPECT_FALSE(Opened.IsPreview());
}

TEST_F(DocumentTest, SetForActualWritesOneSubtitleAndUndoGivesItsBytesBack) {
  Open(Packets(2));
  Opened.Choose(Choice(7, 3));
  ASSERT_TRUE(Opened.SetActual());
  Bytes expected = Packets(2);
  expected[ColourArguments + 1] = 0x17;
  expected[ContrastArguments + 1] = 0xF3;
  EXPECT_EQ(Stream(), expected);
  EXPECT_EQ(Opened.History().undoText(), "Set for actual");
  Opened.Undo();
  EXPECT_EQ(Stream(), Packets(2));
  Opened.Redo();
  EXPECT_EQ(Stream(), expected);
}

TEST_F(DocumentTest, WithoutASubtitleThereIsNoneToSet) {
  Open(Packets(2));
  Opened.Choose(Choice(7, 3));
  Opened.SetNumber(0);
  EXPECT_TRUE(Opened.SetActual());
  EXPECT_EQ(Stream(), Packets(2));
  EXPECT_EQ(Opened.History().count(), 0);
}

TEST_F(DocumentTest, SetForAllIsOneStep) {
  Open(Packets(5));
  Opened.Choose(Choice(7, 3));
  ASSERT_TRUE(Opened.SetAll());
  EXPECT_NE(Stream(), Packets(5));
  EXPECT_EQ(Opened.History().count(), 1);
  EXPECT_EQ(Opened.History().undoText(), "Set for all");
  Opened.Undo();
  EXPECT_EQ(Stream(), Packets(5));
}

TEST_F(DocumentTest, SettingWhatIsThereIsNoStep) {
  Open(Packets(3));
  ASSERT_TRUE(Opened.SetAll());
  EXPECT_EQ(Opened.History().count(), 0);
}

TEST_F(DocumentTest, PaletteThatIsThereAlreadyIsNoStep) {
  ASSERT_TRUE(Opened.SetPalette(StartUpPalette, "Load Palette"));
  EXPECT_EQ(Opened.History().count(), 0);
}

TEST_F(DocumentTest, EditThatDoesNotFitChangesNothingAndIsNoStep) {
  Open(Packets(1));
  StreamEdit edit;
  edit.Replace(5000, 1, Bytes{1});
  EXPECT_FALSE(Opened.Make({.Name = "misfit", .What = edit}));
  EXPECT_EQ(Stream(), Packets(1));
  EXPECT_EQ(Opened.History().count(), 0);
}

TEST_F(DocumentTest, EditIsToldBeforeTheBytesChange) {
  Open(Packets(1));
  Opened.Choose(Choice(7, 0));
  Bytes seen;
  StreamEdit told;
  QObject::connect(&Opened, &Document::AboutToEdit, [&](const DocumentEdit& edit) {
    seen = Stream();
    told = std::get<StreamEdit>(edit.What);
  });
  ASSERT_TRUE(Opened.SetActual());
  EXPECT_EQ(seen, Packets(1));
  ASSERT_TRUE(ApplyEdit(seen, told));
  EXPECT_EQ(seen, Stream());
}

TEST_F(DocumentTest, StepsOfTheHistoryAreToldBeforeTheyHappen) {
  ASSERT_TRUE(Opened.SetPalette(Grey(9), "Load Palette"));
  std::vector<DvdPalette> seen;
  const auto look = [&] { seen.push_back(Opened.Palette()); };
  QObject::connect(&Opened, &Document::AboutToUndo, look);
  QObject::connect(&Opened, &Document::AboutToRedo, look);
  Opened.Undo();
  Opened.Redo();
  EXPECT_EQ(seen, std::vector({Grey(9), StartUpPalette}));
}

TEST_F(DocumentTest, SavingMarksTheCleanState) {
  Open(Packets(1));
  Opened.Choose(Choice(7, 3));
  ASSERT_TRUE(Opened.SetActual());
  EXPECT_FALSE(Opened.History().isClean());
  Opened.MarkSaved();
  EXPECT_TRUE(Opened.History().isClean());
  Opened.Undo();
  EXPECT_FALSE(Opened.History().isClean());
}

TEST_F(DocumentTest, OpeningBeginsANewHistory) {
  Open(Packets(1));
  Opened.Choose(Choice(7, 3));
  ASSERT_TRUE(Opened.SetActual());
  Open(Packets(2));
  EXPECT_EQ(Opened.History().count(), 0);
  EXPECT_TRUE(Opened.History().isClean());
  EXPECT_FALSE(Opened.Enabled().Undo);
}

/// Edits, undone and done again in random orders, give at every step the state that stood there before.
TEST_F(DocumentTest, RandomStepsReturnToEveryStateOfTheHistory) {
  for (const unsigned seed : {1U, 2U, 3U}) {
    std::mt19937 random(seed);
    const auto below = [&](unsigned end) { return static_cast<unsigned>(random() % end); };
    Open(Packets(6));
    std::vector<std::pair<Bytes, DvdPalette>> states = {{Stream(), Opened.Palette()}};
    for (int step = 0; step < 200; ++step) {
      const auto at = static_cast<std::size_t>(Opened.History().index());
      if (const unsigned kind = below(6); kind < 2) {
        kind == 0 ? Opened.Undo() : Opened.Redo();
      } else {
        ASSERT_TRUE(Opened.GoTo(1 + below(6)));
        Opened.Choose(Choice(static_cast<std::uint8_t>(below(16)), static_cast<std::uint8_t>(below(16))));
        ASSERT_TRUE(kind == 2   ? Opened.SetActual()
                    : kind == 3 ? Opened.SetAll()
                                : Opened.SetPalette(Grey(below(256)), "Load Palette"));
        if (Opened.History().index() != static_cast<int>(at)) {
          states.resize(at + 1);
          states.emplace_back(Stream(), Opened.Palette());
        }
      }
      const auto& [bytes, palette] = states.at(static_cast<std::size_t>(Opened.History().index()));
      ASSERT_EQ(Stream(), bytes) << "seed " << seed << " step " << step;
      ASSERT_EQ(Opened.Palette(), palette);
    }
    while (Opened.Enabled().Undo) {
      Opened.Undo();
    }
    EXPECT_EQ(Stream(), Packets(6));
  }
}

TEST(DocumentLanguage, IsThatOfTheTrackThatWasOpenedLast) {
  Document document;
  document.BeginLoading();
  document.SetNumber(1);
  document.Open(Index(ThreeSubtitles()), "de");
  EXPECT_EQ(document.Language(), "de");
  document.BeginLoading();
  document.SetNumber(1);
  document.Open(Index(ThreeSubtitles()));
  EXPECT_EQ(document.Language(), "");
}

}  // namespace
}  // namespace quillmark::test
