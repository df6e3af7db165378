// Every way to write a file, with each of its system calls failing in turn, and each write behind each of its
// bytes: afterwards the file is as it was or complete, nothing else is there, and there is a reason.

#include <functional>
#include <optional>

#include <QFileInfo>

#include "files/AppendFile.h"
#include "files/FileWriter.h"
#include "files/KeptFile.h"
#include "files/ReplaceFile.h"
#include "files/StagedFiles.h"
#include "tests/support/FaultySystem.h"
#include "tests/support/FolderTest.h"

namespace quillmark {
namespace {

using test::BytesOf;
using test::Call;
using test::Fault;
using test::FaultySystem;

struct Way {
  const char* Name;
  std::function<Result<void>(const QString& path)> Write;
  bool NeedsOld = false;
};

void PrintTo(const Way& way, std::ostream* out) {
  *out << way.Name;
}

const std::string OldText = "what was there before";
const std::string NewText = "a new text, of some more bytes than the old one";

class FaultsOfFiles : public test::FolderTest, public testing::WithParamInterface<Way> {
 protected:
  using Text = std::optional<std::string>;

  [[nodiscard]] Text Held() const {
    return QFile::exists(Path("a")) ? std::optional(Read("a")) : std::nullopt;
  }
  void Restore(const Text& before) const {
    for (const std::string& name : Names()) {
      const QString path = Path(QString::fromStdString(name));
      QFile::remove(path);
      QDir(path).removeRecursively();
    }
    if (before) {
      Put("a", *before);
    }
  }
  void RunAll(const Text& before) const {
    Restore(before);
    std::vector<Fault> faults;
    {
      const FaultySystem system;
      const auto done = GetParam().Write(Path("a"));
      ASSERT_TRUE(done) << done.Reason();
      faults = system.Faults(FaultySystem::Writes::AtEachByte);
    }
    const Text complete = Held();
    ASSERT_TRUE(complete && complete != before);
    ASSERT_GT(faults.size(), NewText.size());
    for (const Fault& fault : faults) {
      Restore(before);
      Result<void> done;
      {
        const FaultySystem system(fault);
        done = GetParam().Write(Path("a"));
        EXPECT_TRUE(system.HasFailed());
      }
      const std::string where = std::string(test::CallNames[static_cast<std::size_t>(fault.Kind)]) + " " +
                                std::to_string(fault.Number) + " after " + std::to_string(fault.Taken);
      const Text now = Held();
      if (done) {
        EXPECT_EQ(now, complete) << where;
      } else {
        EXPECT_TRUE(now == before || now == complete) << where;
        EXPECT_FALSE(done.Reason().empty()) << where;
      }
      EXPECT_TRUE(Names().size() == (now ? 1U : 0U) || fault.Kind == Call::Remove) << where;
    }
  }
};

TEST_P(FaultsOfFiles, LeaveNoFileOrAWholeOne) {
  if (!GetParam().NeedsOld) {
    RunAll(std::nullopt);
  }
}

TEST_P(FaultsOfFiles, LeaveTheOldFileOrAWholeOne) {
  RunAll(OldText);
}

/// The old file keeps a second name until the new one has its place.
Result<void> ReplaceAndKeep(const QString& path) {
  auto file = FileWriter::Replacing(path);
  if (!file) {
    return file.Why();
  }
  auto written = file->Write(BytesOf(NewText));
  const auto kept = KeptFile::Of(path.toStdString());
  if (written) {
    written = file->Commit();
  }
  if (kept) {
    kept->Forget();
  }
  return written;
}

Result<void> WriteStaged(const QString& path) {
  auto staged = StagedFiles::In(QFileInfo(path).path());
  if (!staged) {
    return staged.Why();
  }
  if (auto written = ReplaceFile(staged->PathOf("a"), BytesOf(NewText)); !written) {
    return written;
  }
  return staged->TakePlaces(Overwriting::Allowed);
}

Result<void> WriteInPieces(const QString& path) {
  auto file = FileWriter::Replacing(path);
  if (!file) {
    return file.Why();
  }
  for (const std::size_t start : {std::size_t{0}, std::size_t{20}}) {
    if (auto written = file->Write(BytesOf(NewText.substr(start, start == 0 ? 20 : NewText.npos)));
        !written) {
      return written;
    }
  }
  return file->Commit();
}

Result<void> AppendAsOwner(const QString& path) {
  auto file = QFile::exists(path) ? AppendFile::Open(path) : AppendFile::Create(path);
  if (!file) {
    return file.Why();
  }
  return *file ? (*file)->Append(BytesOf(NewText)) : Result<void>(Failure{"it has an owner"});
}

INSTANTIATE_TEST_SUITE_P(
    Files, FaultsOfFiles,
    testing::Values(Way{"replace", [](const QString& path) { return ReplaceFile(path, BytesOf(NewText)); }},
                    Way{"replace_unsynced",
                        [](const QString& path) {
                          return ReplaceFile(path, BytesOf(NewText), {.Wait = Durability::Unsynced});
                        }},
                    Way{"replace_start",
                        [](const QString& path) {
                          return ReplaceFile(path, BytesOf("a new start, and the rest is kept; this is long"),
                                             {.Tail = OldTail::Kept});
                        }},
                    Way{"pieces", WriteInPieces},
                    Way{"append", [](const QString& path) { return AppendToFile(path, BytesOf(NewText)); }},
                    Way{"keep_and_replace", ReplaceAndKeep, true}, Way{"stage", WriteStaged},
                    Way{"own", AppendAsOwner, true}),
    [](const auto& info) { return std::string(info.param.Name); });

class KeptFileFaults : public test::FolderTest {};

TEST_F(KeptFileFaults, FileOfTwoNamesIsNotKept) {
  Put("a", OldText);
  ASSERT_EQ(System().Link(Path("a").toLocal8Bit().constData(), Path("b").toLocal8Bit().constData()), 0);
  EXPECT_FALSE(KeptFile::Of(Path("a").toStdString()).has_value());
}

TEST_F(KeptFileFaults, FileThatGetsNoOtherNameIsNotKept) {
  Put("a", OldText);
  const SystemCalls calls = System();
  System().Link = [](const char*, const char*) { return -1; };
  const bool isKept = KeptFile::Of(Path("a").toStdString()).has_value();
  System() = calls;
  EXPECT_FALSE(isKept);
  EXPECT_EQ(Names(), std::vector<std::string>{"a"});
}

/// What it would have taken the place of stands where the reason says.
TEST_F(KeptFileFaults, FileThatCannotBePutBackIsNamed) {
  Put("a", OldText);
  const auto kept = KeptFile::Of(Path("a").toStdString());
  ASSERT_TRUE(kept.has_value());
  {
    const FaultySystem system(Fault{.Kind = Call::Rename});
    EXPECT_EQ(kept->PutBack().Reason(), "The file from before now has the name a.1.old");
  }
  EXPECT_EQ(Read("a.1.old"), OldText);
}

}  // namespace
}  // namespace quillmark
