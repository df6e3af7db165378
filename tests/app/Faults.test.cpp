#include <QAction>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStatusBar>

#include "sup/EditJournal.h"
#include "tests/app/MergeTest.h"
#include "tests/support/FaultySystem.h"

// What the window writes, with each system call failing in turn: afterwards the file is as it was or
// complete, and a message says which one it is.

namespace quillmark::test {
namespace {

class Faults : public MergeTest {
 protected:
  struct Outcome {
    Fault What;
    std::optional<QByteArray> Text;  ///< of the file afterwards
    QStringList Messages;
    std::string Trace;
  };

  [[nodiscard]] static std::optional<QByteArray> TextAt(const QString& path) {
    return QFileInfo::exists(path) ? std::optional(ReadText(path)) : std::nullopt;
  }
  static void Put(const QString& path, const std::optional<QByteArray>& text) {
    QFile file(path);
    file.remove();
    if (text && file.open(QIODevice::WriteOnly)) {
      file.write(*text);
    }
  }

  /// Has the window write the file once and then with each fault, over what `before` is.
  template <class Act, class Look>
  void RunAll(const QString& path, const std::optional<QByteArray>& before, const Act& act,
              const Look& look) {
    Dialogs.AllowMessages();
    Put(path, before);
    std::vector<Fault> faults;
    {
      const FaultySystem system;
      act();
      faults = system.Faults();
    }
    const auto complete = TextAt(path);
    ASSERT_TRUE(complete.has_value() && complete != before);
    ASSERT_FALSE(faults.empty());
    for (const Fault& fault : faults) {
      Put(path, before);
      const auto messages = Dialogs.MessageTexts().size();
      {
        const FaultySystem system(fault);
        act();
      }
      look(Outcome{.What = fault,
                   .Text = TextAt(path),
                   .Messages = Dialogs.MessageTexts().mid(messages),
                   .Trace = std::string(CallNames[static_cast<std::size_t>(fault.Kind)]) + " " +
                            std::to_string(fault.Number) + " after " + std::to_string(fault.Taken)},
           *complete);
    }
  }

  /// The file is one of the two, and where it is not the new one the message holds these words.
  template <class Act>
  void RequireOldOrNew(const QString& path, const QString& words, const Act& act) {
    const std::optional<QByteArray> before = "as it was";
    RunAll(path, before, act, [&](const Outcome& outcome, const QByteArray& complete) {
      if (outcome.Text != complete) {
        EXPECT_EQ(outcome.Text, before) << outcome.Trace;
        ASSERT_EQ(outcome.Messages.size(), 1) << outcome.Trace;
        EXPECT_TRUE(outcome.Messages.front().contains(words)) << outcome.Messages.front().toStdString();
      }
    });
  }
};

TEST_F(Faults, OfSaveSup) {
  LoadStream(ThreeSubtitles());
  const QString path = Path("new.sup");
  RequireOldOrNew(path, "new.sup", [&] {
    Dialogs.ExpectSave(path);
    Click("Command_SaveSup");
  });
}

/// Its message is a fixed one.
TEST_F(Faults, OfSavePalette) {
  LoadStream(ThreeSubtitles());
  const QString path = Path("new.pal");
  RequireOldOrNew(path, "Cannot open file", [&] {
    Dialogs.ExpectSave(path);
    Click("Command_SavePalette");
  });
}

TEST_F(Faults, OfSaveRecipe) {
  LoadStream(ThreeSubtitles());
  Choose("ImageCombo2", "3");
  Click("Command_SetAll");
  const QString path = Path("new.json");
  RequireOldOrNew(path, "new.json", [&] {
    Dialogs.ExpectSave(path);
    Control<QAction>("Action_SaveRecipe").trigger();
  });
}

/// The old file goes first, and what was written before a failure stays: the message says that it is not all.
TEST_F(Faults, OfSaveMerged) {
  LoadStream(PrimaryStream({{1000, 100}, {3000, 100}}));
  Merge(SecondaryStream({1000, 3000}));
  const QString path = Path("new.sup");
  const auto look = [](const Outcome& outcome, const QByteArray& complete) {
    if (outcome.Text != complete) {
      EXPECT_TRUE(!outcome.Text || complete.startsWith(*outcome.Text)) << outcome.Trace;
      ASSERT_EQ(outcome.Messages.size(), 1) << outcome.Trace;
      EXPECT_TRUE(outcome.Messages.front().contains("new.sup")) << outcome.Messages.front().toStdString();
    }
  };
  RunAll(
      path, QByteArray("as it was"),
      [&] {
        Dialogs.ExpectSave(path);
        Click("Command_SaveSecond");
      },
      look);
}

/// Each picture is a file of its own, and the list is told of by its name.
TEST_F(Faults, OfPicturesThatAreSavedWhileTheyAreShown) {
  LoadStream(ThreeSubtitles());
  Click("Check_SavePics");
  const QString list = Path("movie_spu.xml");
  const QString picture = Path("movie_SubPng/00+00+05+00.png");
  const auto show = [&] { GoTo("2"); };
  RunAll(picture, std::nullopt, show, [](const Outcome& outcome, const QByteArray& complete) {
    if (outcome.Text != complete) {
      EXPECT_EQ(outcome.Text, std::nullopt) << outcome.Trace;
      EXPECT_FALSE(outcome.Messages.isEmpty()) << outcome.Trace;
    }
  });
  RunAll(list, QByteArray("kept\r\n"), show, [](const Outcome& outcome, const QByteArray& complete) {
    if (outcome.Text != complete) {
      EXPECT_EQ(outcome.Text, QByteArray("kept\r\n")) << outcome.Trace;
      ASSERT_FALSE(outcome.Messages.isEmpty()) << outcome.Trace;
      EXPECT_TRUE(outcome.Messages.front().contains("movie_spu.xml")) << outcome.Trace;
    }
  });
}

/// What could not be written down whole is not there at all, and the records before it are; it is told.
TEST_F(Faults, OfTheJournal) {
  QDir folder(State.Path() + "/quillmark");
  const auto journal = [&folder] {
    const QStringList names = folder.entryList(QDir::Files);
    return names.isEmpty() ? QByteArray() : ReadText(folder.filePath(names.front()));
  };
  const auto assign = [this](const char* entry) {
    Choose("ImageCombo2", entry);
    Click("Command_SetAll");
  };
  // The stream is loaded anew each time: where no journal can be kept none is begun before the next stream.
  const auto begin = [&] {
    folder.removeRecursively();
    LoadStream(ThreeSubtitles());
    assign("3");
    return journal();
  };
  Dialogs.AllowMessages();
  ASSERT_FALSE(begin().isEmpty());
  std::vector<Fault> faults;
  {
    const FaultySystem system;
    assign("4");
    faults = system.Faults();
  }
  ASSERT_FALSE(faults.empty());
  const QByteArray complete = journal();
  for (const Fault& fault : faults) {
    const QByteArray before = begin();
    {
      const FaultySystem system(fault);
      assign("4");
    }
    QCoreApplication::processEvents();
    const QByteArray now = journal();
    EXPECT_TRUE(now.isEmpty() || now == before || now.size() == complete.size()) << fault.Number;
    EXPECT_TRUE(now.isEmpty() || ReadJournal(Bytes(now.begin(), now.end())).IsOk()) << fault.Number;
    EXPECT_EQ(Window.statusBar()->currentMessage().startsWith("Unsaved edits cannot be kept"),
              now.size() != complete.size())
        << fault.Number << Window.statusBar()->currentMessage().toStdString();
  }
}

}  // namespace
}  // namespace quillmark::test
