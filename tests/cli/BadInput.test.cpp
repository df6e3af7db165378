#include <algorithm>

#include "tests/cli/Program.h"
#include "tests/support/OrdinaryUser.h"

namespace quillmark::cli {
namespace {

using test::Sound;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

/// One place of a command line where a file is read.
struct Use {
  const char* Name;
  std::string File;  ///< its extension says what it should hold
  std::vector<std::string> Arguments;
};

void PrintTo(const Use& use, std::ostream* out) {
  *out << use.Name;
}

std::vector<Use> StreamUses() {
  return {{"Report", "in.sup", {"report", "in.sup"}},
          {"List", "in.sup", {"list", "in.sup"}},
          {"Check", "in.sup", {"check", "in.sup"}},
          {"Picture", "in.sup", {"picture", "in.sup", "1", "-o", "out.png"}},
          {"Export", "in.sup", {"export", "in.sup", "-o", "out"}},
          {"Assign", "in.sup", {"assign", "in.sup", "--colours", "0123", "-o", "out.sup"}},
          {"Fix", "in.sup", {"fix", "in.sup", "-o", "out.sup"}},
          {"Salvage", "in.sup", {"salvage", "in.sup", "-o", "out.sup"}},
          {"Retime", "in.sup", {"retime", "in.sup", "--shift", "40", "-o", "out.sup"}},
          {"Tracks", "in.sup", {"tracks", "in.sup"}},
          {"Convert", "in.sup", {"convert", "in.sup", "-o", "out.idx"}},
          {"JoinFirst", "in.sup", {"join", "in.sup", "sound.sup", "-o", "out.sup"}},
          {"JoinSecond", "in.sup", {"join", "sound.sup", "in.sup", "-o", "out.sup"}},
          {"MergePrimary", "in.sup", {"merge", "in.sup", "sound.sup", "-o", "out.sup"}},
          {"MergeSecondary", "in.sup", {"merge", "sound.sup", "in.sup", "-o", "out.sup"}}};
}

std::vector<Use> ContainerUses() {
  return {{"Matroska", "in.mkv", {"convert", "in.mkv", "-o", "out.sup"}},
          {"ProgramStream", "in.vob", {"convert", "in.vob", "-o", "out.sup"}},
          {"Pair", "in.idx", {"convert", "in.idx", "-o", "out.sup"}}};
}

std::vector<Use> PaletteUses() {
  return {
      {"Palette", "in.pal", {"palette", "in.pal", "-o", "out.pal"}},
      {"PalettesIfo", "in.ifo", {"palette", "in.ifo", "-o", "out.pal"}},
      {"PaletteOfPicture", "in.pal", {"picture", "sound.sup", "1", "--palette", "in.pal", "-o", "out.png"}},
      {"PaletteOfExport", "in.pal", {"export", "sound.sup", "--palette", "in.pal", "-o", "out"}},
      {"PaletteOfMerge",
       "in.pal",
       {"merge", "sound.sup", "sound.sup", "--palette", "in.pal", "-o", "out.sup"}}};
}

std::vector<Use> PictureUses() {
  return {{"Background", "in.png", {"picture", "sound.sup", "1", "--background", "in.png", "-o", "out.png"}}};
}

std::vector<Use> Joined(std::vector<Use> uses, const std::vector<Use>& more) {
  uses.insert(uses.end(), more.begin(), more.end());
  return uses;
}

class UnreadableInput : public test::ProgramTest, public testing::WithParamInterface<Use> {
 protected:
  void SetUp() override { Write("sound.sup", Sound().Build()); }

  /// Runs the command, which has to fail with a reason that names the file, and to write nothing.
  std::string Reason() {
    const auto before = Names();
    const auto run = Run(GetParam().Arguments);
    EXPECT_EQ(run.ExitCode, 1);
    EXPECT_THAT(run.Out, IsEmpty());
    EXPECT_EQ(Names(), before);
    const std::string start = "quillmark-cli: " + GetParam().File + ": ";
    EXPECT_THAT(run.Err, StartsWith(start));
    EXPECT_EQ(std::ranges::count(run.Err, '\n'), 1);
    return run.Err.substr(std::min(start.size(), run.Err.size()));
  }
};

/// Streams and palettes, whose reasons are our own.
class UnreadableFile : public UnreadableInput {};

TEST_P(UnreadableFile, Missing) {
  EXPECT_EQ(Reason(), "No such file or directory\n");
}

TEST_P(UnreadableFile, Folder) {
  std::filesystem::create_directory(GetParam().File);
  EXPECT_EQ(Reason(), "it is a folder\n");
}

TEST_P(UnreadableFile, WithoutPermission) {
  if (!test::PermissionsBind()) {
    GTEST_SKIP() << test::NeedsOrdinaryUser;
  }
  Write(GetParam().File, {});
  std::filesystem::permissions(GetParam().File, std::filesystem::perms::none);
  EXPECT_EQ(Reason(), "Permission denied\n");
}

TEST_P(UnreadableFile, EndlessDevice) {
  std::filesystem::create_symlink("/dev/zero", GetParam().File);
  EXPECT_THAT(Reason(), testing::SizeIs(testing::Gt(1U)));
}

TEST_P(UnreadableFile, LoopingLink) {
  std::filesystem::create_symlink(GetParam().File, GetParam().File);
  EXPECT_EQ(Reason(), "Too many levels of symbolic links\n");
}

INSTANTIATE_TEST_SUITE_P(Streams, UnreadableFile,
                         testing::ValuesIn(Joined(StreamUses(), Joined(ContainerUses(), PaletteUses()))),
                         [](const auto& test) { return test.param.Name; });

class UnreadablePicture : public UnreadableInput {};

TEST_P(UnreadablePicture, Missing) {
  EXPECT_EQ(Reason(), "File Not Found\n");
}

TEST_P(UnreadablePicture, FolderDeviceOrNoPicture) {
  std::filesystem::create_directory("in.png");
  EXPECT_THAT(Reason(), testing::SizeIs(testing::Gt(1U)));
  std::filesystem::remove("in.png");
  std::filesystem::create_symlink("/dev/null", "in.png");
  EXPECT_THAT(Reason(), testing::SizeIs(testing::Gt(1U)));
  std::filesystem::remove("in.png");
  WriteText("in.png", "no picture");
  EXPECT_THAT(Reason(), testing::SizeIs(testing::Gt(1U)));
}

INSTANTIATE_TEST_SUITE_P(Pictures, UnreadablePicture, testing::ValuesIn(PictureUses()),
                         [](const auto& test) { return test.param.Name; });

/// Names are bytes where the file system has them as bytes.
class NameNotInUtf8 : public test::ProgramTest {
 protected:
  static constexpr const char* Stream = "\xFF\xE9.sup";

  void SetUp() override { Write(Stream, Sound(90000).Build()); }
};

TEST_F(NameNotInUtf8, IsReadByEveryCommandThatReadsAStream) {
  for (const Use& use : StreamUses()) {
    if (use.Name == std::string("Export")) {
      continue;
    }
    Write("sound.sup", Sound().Build());
    auto arguments = use.Arguments;
    std::ranges::replace(arguments, "in.sup", Stream);
    EXPECT_EQ(Run(arguments).ExitCode, 0) << use.Name;
  }
}

TEST_F(NameNotInUtf8, IsNoNameForAnExportsPictures) {
  const auto run = Run({"export", Stream});
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_EQ(run.Err, "quillmark-cli: \xFF\xE9.sup: the name is not in UTF-8\n");
  EXPECT_THAT(Names(), ElementsAre(Stream));
  EXPECT_EQ(Run({"export", Stream, "-o", "out"}).ExitCode, 0);
}

TEST_F(NameNotInUtf8, OfAPaletteIsRead) {
  std::string lines;
  for (int entry = 0; entry < 16; ++entry) {
    lines += "EB8080\r\n";
  }
  WriteText("\xFF.pal", lines);
  ASSERT_EQ(Run({"palette", "\xFF.pal", "-o", "out.pal"}).ExitCode, 0);
  EXPECT_EQ(ReadText("out.pal"), lines);
}

TEST_F(NameNotInUtf8, OfABackgroundIsRefused) {
  const auto run = Run({"picture", Stream, "1", "--background", "\xFF.png", "-o", "out.png"});
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_EQ(run.Err, "quillmark-cli: \xFF.png: the name is not in UTF-8\n");
  EXPECT_FALSE(Exists("out.png"));
}

}  // namespace
}  // namespace quillmark::cli
