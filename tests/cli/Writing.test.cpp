#include <sys/stat.h>

#include "tests/cli/Program.h"
#include "tests/support/OwnDevice.h"

// What every command that writes a file has in common: what it refuses, and what a full disk costs.

namespace quillmark::cli {
namespace {

using test::Bytes;
using test::Join;
using test::ProgramRun;
using test::Second;
using test::Sound;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

struct Writer {
  const char* Name;
  std::vector<std::string> Arguments;  ///< up to the name of what it writes
  const char* Extension;               ///< that the name must have
};

void PrintTo(const Writer& writer, std::ostream* out) {
  *out << writer.Name;
}

class WritingCommand : public test::ProgramTest, public testing::WithParamInterface<Writer> {
 protected:
  void SetUp() override {
    Write("a.sup", Join({Sound(Second).Build(), Sound(5 * Second).Build()}));
    Write("b.sup", Sound(Second).Build());
    std::string palette;
    for (int entry = 0; entry < 16; ++entry) {
      palette += "108080\r\n";
    }
    WriteText("p.pal", palette);
  }

  [[nodiscard]] static std::string Named(const std::string& name) { return name + GetParam().Extension; }

  ProgramRun WriteTo(const std::string& name) {
    std::vector<std::string> arguments = GetParam().Arguments;
    arguments.push_back(name);
    return Run(arguments);
  }

  /// For a shell; none of the words needs quotes.
  [[nodiscard]] static std::string ShellCommand() {
    std::string command = "quillmark-cli";
    for (const std::string& argument : GetParam().Arguments) {
      command += " " + argument;
    }
    return command;
  }

  /// Lets no file grow while the command runs, as on a disk that is full; what it says goes
  /// through a pipe.
  ProgramRun WriteToFullDisk(const std::string& name) {
    return RunScript("set +e\n(trap '' XFSZ; ulimit -f 0; exec " + ShellCommand() + " " + name +
                     ") 2>&1 | cat >&2\nexit ${PIPESTATUS[0]}");
  }

  /// Asked once: the answer stays.
  bool CanMount() {
    static const bool can = RunScript("unshare -Urm mount -t tmpfs tmpfs /mnt").ExitCode == 0;
    return can;
  }
};

TEST_P(WritingCommand, FullDiskLeavesTheOldFile) {
  WriteText(Named("out"), "as it was");
  const ProgramRun run = WriteToFullDisk(Named("out"));
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_EQ(run.Err, "quillmark-cli: " + Named("out") + ": File too large\n");
  EXPECT_EQ(ReadText(Named("out")), "as it was");
  EXPECT_THAT(Names(), ElementsAre("a.sup", "b.sup", Named("out"), "p.pal"));
}

TEST_P(WritingCommand, FullDiskLeavesNoNewFile) {
  const ProgramRun run = WriteToFullDisk(Named("out"));
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_EQ(run.Err, "quillmark-cli: " + Named("out") + ": File too large\n");
  EXPECT_THAT(Names(), ElementsAre("a.sup", "b.sup", "p.pal"));
}

/// A real disk of 64 KiB with nothing left on it.
TEST_P(WritingCommand, SmallDiskThatIsFullLeavesTheOldFile) {
  if (!CanMount()) {
    GTEST_SKIP() << "this machine lets nobody mount a disk of one's own";
  }
  const ProgramRun run = RunScript(
      "mkdir disk\n"
      "export COMMAND='" +
      ShellCommand() + "' EXTENSION=" + GetParam().Extension +
      "\n"
      "unshare -Urm bash -c '\n"
      "mount -t tmpfs -o size=64k tmpfs disk\n"
      "echo as it was >disk/old$EXTENSION\n"
      "head -c 100000 /dev/zero >disk/filling 2>/dev/null\n"
      "$COMMAND disk/old$EXTENSION; echo $?\n"
      "$COMMAND disk/new$EXTENSION; echo $?\n"
      "ls -A disk; cat disk/old$EXTENSION'");
  EXPECT_EQ(run.Out, "1\n1\nfilling\n" + Named("old") + "\nas it was\n");
  EXPECT_EQ(run.Err, "quillmark-cli: " + Named("disk/old") + ": No space left on device\nquillmark-cli: " +
                         Named("disk/new") + ": No space left on device\n");
}

TEST_P(WritingCommand, MissingFolder) {
  EXPECT_EQ(WriteTo(Named("missing/out")).Err,
            "quillmark-cli: " + Named("missing/out") + ": No such file or directory\n");
}

TEST_P(WritingCommand, FolderInThePlaceOfTheFile) {
  ASSERT_TRUE(std::filesystem::create_directory(Named("out")));
  const ProgramRun run = WriteTo(Named("out"));
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_EQ(run.Err, "quillmark-cli: " + Named("out") + ": It is a folder\n");
}

TEST_P(WritingCommand, PipeIsRefusedAndStays) {
  ASSERT_EQ(::mkfifo(Named("out").c_str(), 0666), 0);
  const ProgramRun run = WriteTo(Named("out"));
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_EQ(run.Err, "quillmark-cli: " + Named("out") + ": It is a pipe, not a file\n");
  EXPECT_TRUE(std::filesystem::is_fifo(std::filesystem::symlink_status(Named("out"))));
}

TEST_P(WritingCommand, LinkToItselfIsRefusedAndStays) {
  std::filesystem::create_symlink(Named("out"), Named("out"));
  const ProgramRun run = WriteTo(Named("out"));
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_EQ(run.Err, "quillmark-cli: " + Named("out") + ": Too many levels of symbolic links\n");
  EXPECT_TRUE(std::filesystem::is_symlink(Named("out")));
}

TEST_P(WritingCommand, DeviceIsWrittenToAndStays) {
  const std::string fullDevice = test::OwnDevice(Path(""), test::Device::Full);
  const std::string nullDevice = test::OwnDevice(Path(""), test::Device::Null);
  if (fullDevice.empty() || nullDevice.empty()) {
    GTEST_SKIP() << test::NeedsDevices;
  }
  const std::string full = Named("full");
  const std::string null = Named("null");
  std::filesystem::create_symlink(fullDevice, Path(full));
  std::filesystem::create_symlink(nullDevice, Path(null));
  EXPECT_EQ(WriteTo(full).Err, "quillmark-cli: " + full + ": No space left on device\n");
  EXPECT_EQ(WriteTo(null).Err, "");
  EXPECT_TRUE(test::IsDevice(fullDevice));
  EXPECT_TRUE(test::IsDevice(nullDevice));
  for (const std::string& name : {full, null}) {
    EXPECT_TRUE(std::filesystem::is_character_file(name) && std::filesystem::is_symlink(name)) << name;
  }
}

TEST_P(WritingCommand, NameThatIsNotUtf8) {
  const ProgramRun run = WriteTo(Named("\xFF"));
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_THAT(run.Err, HasSubstr("the name is not in UTF-8"));
  EXPECT_THAT(Names(), ElementsAre("a.sup", "b.sup", "p.pal"));
}

TEST_P(WritingCommand, NameOf250Letters) {
  const std::string name = Named(std::string(246, 'n'));
  EXPECT_EQ(WriteTo(name).Err, "");
  EXPECT_EQ(WriteTo(name).Err, "");
  EXPECT_THAT(Names(), ElementsAre("a.sup", "b.sup", name, "p.pal"));
}

TEST_P(WritingCommand, SecondNameStaysOneOfTheSameFile) {
  WriteText(Named("out"), "old\n");
  std::filesystem::create_hard_link(Named("out"), "second");
  EXPECT_EQ(WriteTo(Named("out")).ExitCode, 0);
  EXPECT_NE(ReadText("second"), "old\n");
  EXPECT_EQ(Read("second"), Read(Named("out")));
}

INSTANTIATE_TEST_SUITE_P(
    , WritingCommand,
    testing::Values(Writer{"Assign", {"assign", "a.sup", "--colours", "0123", "-o"}, ".sup"},
                    Writer{"Merge", {"merge", "a.sup", "b.sup", "-o"}, ".sup"},
                    Writer{"Picture", {"picture", "a.sup", "1", "-o"}, ".png"},
                    Writer{"Palette", {"palette", "p.pal", "-o"}, ".pal"},
                    Writer{"Salvage", {"salvage", "a.sup", "-o"}, ".sup"},
                    Writer{"Fix", {"fix", "a.sup", "-o"}, ".sup"},
                    Writer{"Retime", {"retime", "a.sup", "--shift", "40", "-o"}, ".sup"},
                    Writer{"Join", {"join", "a.sup", "b.sup", "-o"}, ".sup"}),
    [](const auto& test) { return test.param.Name; });

class ExportWriting : public test::ProgramTest {
 protected:
  void SetUp() override {
    Write("a.sup", Join({Sound(Second).Build(), Sound(5 * Second).Build(), Sound(9 * Second).Build()}));
  }
};

TEST_F(ExportWriting, FullDiskKeepsTheOldListAndLeavesNoHalfPicture) {
  WriteText("a_spu.xml", "an older list");
  const ProgramRun run = RunScript(
      "set +e\n(trap '' XFSZ; ulimit -f 0; exec quillmark-cli export a.sup) 2>&1 | cat >&2\n"
      "exit ${PIPESTATUS[0]}");
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_EQ(
      run.Err,
      "quillmark-cli: a_SubPng/00+00+01+00.png: File too large (3 pictures could not be written; this is "
      "the first one)\n");
  EXPECT_EQ(ReadText("a_spu.xml"), "an older list");
  EXPECT_EQ(RunScript("ls -A a_SubPng").Out, "");
}

TEST_F(ExportWriting, MissingFolder) {
  const ProgramRun run = Run({"export", "a.sup", "-o", "missing/a"});
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_EQ(run.Err,
            "quillmark-cli: missing/a_SubPng: the folder cannot be created: No such file or directory\n");
}

TEST_F(ExportWriting, NameThatIsNotUtf8) {
  const ProgramRun run = Run({"export", "a.sup", "-o", "\xFF"});
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_THAT(run.Err, HasSubstr("the name is not in UTF-8"));
  EXPECT_THAT(Names(), ElementsAre("a.sup"));
}

TEST_F(ExportWriting, PictureThatCannotBeWrittenStopsNoOther) {
  ASSERT_EQ(RunScript("mkdir -p a_SubPng/00+00+01+00.png").ExitCode, 0);
  const ProgramRun run = Run({"export", "a.sup"});
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_EQ(run.Err, "quillmark-cli: a_SubPng/00+00+01+00.png: It is a folder\n");
  EXPECT_TRUE(Exists("a_SubPng/00+00+05+00.png"));
  EXPECT_TRUE(Exists("a_SubPng/00+00+09+00.png"));
  EXPECT_FALSE(Exists("a_spu.xml"));
}

TEST_F(ExportWriting, ListThatCannotBeWrittenIsNamed) {
  ASSERT_EQ(RunScript("mkdir a_spu.xml").ExitCode, 0);
  const ProgramRun run = Run({"export", "a.sup"});
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_EQ(run.Err, "quillmark-cli: a_spu.xml: It is a folder\n");
}

TEST_F(ExportWriting, ReversedAreaIsLeftOutOfPicturesAndListAndNamed) {
  Write("a.sup", Join({Sound(Second).Build(), Sound(5 * Second).Area(9, 5, 0, 1).Build()}));
  const ProgramRun run = Run({"export", "a.sup"});
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_EQ(run.Out, "wrote 1 pictures to a_SubPng, their list to a_spu.xml\n");
  EXPECT_EQ(run.Err,
            "quillmark-cli: a.sup: subtitle 2 has an area without pixels\n"
            "quillmark-cli: a.sup: 1 of 2 subtitles have an area without pixels\n");
  EXPECT_THAT(ReadText("a_spu.xml"), StartsWith("    <spu start=\"00:00:01.00\""));
  EXPECT_THAT(ReadText("a_spu.xml"), testing::Not(HasSubstr("00:00:05.00")));
  EXPECT_FALSE(Exists("a_SubPng/00+00+05+00.png"));
}

/// What looks like a placeholder is a part of the name like any other.
TEST_F(ExportWriting, PercentSignsInTheName) {
  EXPECT_EQ(Run({"export", "a.sup", "-o", "Movie%2C The %1"}).ExitCode, 0);
  EXPECT_TRUE(Exists("Movie%2C The %1_SubPng/00+00+01+00.png"));
}

/// A process of the same number as this one was killed before it could tidy up.
TEST_F(ExportWriting, WhatAKilledRunLeftBehindIsInNobodysWay) {
  const ProgramRun run = RunScript(
      "mkdir a_SubPng\n"
      "touch a_SubPng/00+00+01+00.png.$$\n"
      "exec quillmark-cli export a.sup");
  EXPECT_EQ(run.ExitCode, 0) << run.Err;
  EXPECT_TRUE(Exists("a_SubPng/00+00+01+00.png"));
}

/// `lines` lines of 226 pixels, codes 1 and 2 by turns, one nibble for each: 113 bytes a line. Opaque, at
/// (100, 2); merged, every line takes 117 bytes.
Bytes Noise(std::int64_t time, unsigned lines) {
  const unsigned fieldBytes = lines / 2 * 113;
  const unsigned control = 4 + 2 * fieldBytes;
  const Bytes commands =
      Join({test::StartDisplay, test::SetColour(3, 2, 1, 0), test::SetContrast(15, 15, 15, 0),
            test::SetArea(100, 325, 2, 1 + lines), test::SetFields(4, 4 + fieldBytes), test::EndOfSequence});
  return test::PacketBuilder()
      .Time(time)
      .ControlOffset(control)
      .Unit(Join({Bytes(std::size_t{2} * fieldBytes, 0x56), test::Sequence(0, control + 24, {commands}),
                  test::Sequence(10, control + 24, {test::StopDisplay, test::EndOfSequence})}))
      .Build();
}

class MergeWriting : public test::ProgramTest {};

TEST_F(MergeWriting, UnitTooLongToReadIsNamedAndTheFileKept) {
  Write("a.sup", Join({Noise(Second, 20), Noise(5 * Second, 280)}));
  Write("b.sup", Sound(Second).Contrast(0, 0, 0, 0).Build());
  const ProgramRun run = Run({"merge", "a.sup", "b.sup", "-o", "c.sup"});
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_EQ(
      run.Err,
      "quillmark-cli: c.sup: subtitle 2 is longer than 32767 bytes; programs, this one included, cannot "
      "read it\n");
  EXPECT_EQ(Json::parse(Run({"report", "c.sup", "--json"}).Out)["parse_errors"], 1);
}

}  // namespace
}  // namespace quillmark::cli
