#include <algorithm>
#include <map>

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QDirIterator>
#include <QPushButton>
#include <QRadioButton>
#include <QStatusBar>

#include "app/ExportDialog.h"
#include "tests/app/ListTest.h"
#include "tests/support/FaultySystem.h"

namespace quillmark::test {
namespace {

/// The dialog of Export, worked as a user does.
class OpenExport {
 public:
  explicit OpenExport(QDialog& dialog) : dialog_(dialog) {}

  template <class Widget>
  [[nodiscard]] Widget& Control(const QString& name) const {
    auto* control = dialog_.findChild<Widget*>(name);
    if (control == nullptr) {
      test::Abandon("no such control: " + name.toStdString());
    }
    return *control;
  }
  void Choose(const QString& list, const QString& item) const {
    auto& combo = Control<QComboBox>(list);
    const int row = combo.findText(item);
    ASSERT_GE(row, 0) << item.toStdString();
    combo.setCurrentIndex(row);
  }
  void Type(const QString& path) const {
    auto& line = Control<QLineEdit>("Text_Path");
    line.selectAll();
    QTest::keyClick(&line, Qt::Key_Delete);
    QTest::keyClicks(&line, path);
  }
  [[nodiscard]] QString File() const { return Control<QLineEdit>("Text_Path").text(); }
  [[nodiscard]] QString Files() const { return Control<QLabel>("Label_Files").text(); }
  [[nodiscard]] QString Language() const { return Control<QComboBox>("Combo_Language").currentText(); }
  void Export() const { Control<QPushButton>("Command_Export").click(); }
  void Cancel() const { dialog_.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Cancel)->click(); }

 private:
  QDialog& dialog_;
};

class ExportCommand : public ListTest {
 protected:
  /// Opens the dialog, does this in it, and comes back when it is closed and what was chosen is done.
  void In(const std::function<void(const OpenExport&)>& work) {
    Dialogs.Expect(DialogKind::Other, [work](QDialog& dialog) { work(OpenExport(dialog)); });
  }
  void Start() {
    ASSERT_TRUE(Action("Export").isEnabled());
    Action("Export").trigger();
    QCoreApplication::processEvents();
    Dialogs.Verify();
  }
  [[nodiscard]] QString Told() const { return Window.statusBar()->currentMessage(); }
  [[nodiscard]] QStringList FilesThere() const {
    return QDir(Folder.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot, QDir::Name);
  }
};

TEST_F(ExportCommand, SupOfAllIsTheStream) {
  LoadStream(ThreeSubtitles());
  In([](const OpenExport& dialog) { dialog.Export(); });
  Start();
  EXPECT_EQ(Read(Path("movie_new.sup")), ThreeSubtitles());
  EXPECT_EQ(Told(), "Exported movie_new.sup, 3 subtitles");
}

TEST_F(ExportCommand, WhereNothingIsSelectedOnlyAllCanBeChosen) {
  LoadStream(ThreeSubtitles());
  List().clearSelection();
  In([](const OpenExport& dialog) {
    EXPECT_TRUE(dialog.Control<QRadioButton>("Option_All").isChecked());
    EXPECT_FALSE(dialog.Control<QRadioButton>("Option_Selected").isEnabled());
    dialog.Cancel();
  });
  Start();
  ClickRow(1);
  In([](const OpenExport& dialog) {
    EXPECT_TRUE(dialog.Control<QRadioButton>("Option_Selected").isEnabled());
    dialog.Cancel();
  });
  Start();
}

TEST_F(ExportCommand, SupOfTheSelectedHasTheirPacketsAlone) {
  LoadStream(ThreeSubtitles());
  ClickRow(1);
  ClickRow(3, Qt::ControlModifier);
  In([](const OpenExport& dialog) {
    EXPECT_TRUE(dialog.Control<QRadioButton>("Option_Selected").isChecked());
    dialog.Export();
  });
  Start();
  EXPECT_EQ(Read(Path("movie_new.sup")),
            Join({FourCodes(PacketBuilder().Time(1 * Second).Delay(100), 100, 400),
                  FourCodes(PacketBuilder().Time(9 * Second).Delay(100), 100, 440)}));
  EXPECT_EQ(Told(), "Exported movie_new.sup, 2 subtitles");
}

TEST_F(ExportCommand, ShorterFileTakesThePlaceOfALongerOne) {
  Write("out.sup", Bytes(1000, 'x'));
  LoadStream(ThreeSubtitles());
  In([](const OpenExport& dialog) {
    dialog.Type("out.sup");
    dialog.Export();
  });
  Dialogs.ExpectMessage("There already: out.sup.\r\nReplace what is there?");
  Action("Export").trigger();
  Dialogs.Verify();
  EXPECT_EQ(Read(Path("out.sup")), ThreeSubtitles());
}

TEST_F(ExportCommand, FileThatIsThereIsReplacedOnlyWhenTheUserSaysSo) {
  Write("out.sup", Bytes(10, 'x'));
  LoadStream(ThreeSubtitles());
  In([](const OpenExport& dialog) {
    dialog.Type("out.sup");
    EXPECT_TRUE(dialog.Files().contains("There already: out.sup")) << dialog.Files().toStdString();
    dialog.Export();
    dialog.Cancel();
  });
  Dialogs.ExpectMessage("There already: out.sup.\r\nReplace what is there?", QMessageBox::Cancel);
  Action("Export").trigger();
  Dialogs.Verify();
  EXPECT_EQ(Read(Path("out.sup")), Bytes(10, 'x'));
}

#ifdef QUILLMARK_HAS_VOBSUB
TEST_F(ExportCommand, VobSubPairHasUnitsPaletteAndLanguage) {
  LoadStream(ThreeSubtitles());
  In([](const OpenExport& dialog) {
    dialog.Choose("Combo_What", "VobSub pair");
    EXPECT_TRUE(dialog.File().endsWith("/movie.idx")) << dialog.File().toStdString();
    EXPECT_EQ(dialog.Files(), "Writes movie.idx and movie.sub");
    EXPECT_EQ(dialog.Language(), "unknown");
    dialog.Choose("Combo_Language", "German (de)");
    dialog.Export();
  });
  Start();
  const QByteArray index = ReadText(Path("movie.idx"));
  EXPECT_TRUE(index.contains("id: de, index: 0")) << index.toStdString();
  EXPECT_TRUE(index.contains("timestamp: 00:00:05:000, filepos: 000000800")) << index.toStdString();
  EXPECT_TRUE(index.contains("palette: ")) << index.toStdString();
  const Bytes packs = Read(Path("movie.sub"));
  ASSERT_EQ(packs.size(), 3U * 2048U);
  const Bytes stream = ThreeSubtitles();
  EXPECT_TRUE(std::equal(stream.begin() + 10, stream.begin() + 48, packs.begin() + 0x1D));
}

TEST(ExportDialogTest, LanguageIsProposedAsTheFileHadIt) {
  const SupStream stream;
  const std::pair<const char*, const char*> languages[] = {
      {"de", "German (de)"},        {"DE", "German (de)"}, {"ger", "German (de)"}, {"de-AT", "German (de)"},
      {"pt-BR", "Portuguese (pt)"}, {"", "unknown"},       {"zz", "unknown"}};
  for (const auto& [tag, name] : languages) {
    const ExportDialog dialog({.Stream = stream, .Path = "movie.sup", .Selected = {}, .Language = tag},
                              nullptr);
    EXPECT_EQ(dialog.findChild<QComboBox*>("Combo_Language")->currentText(), name) << tag;
  }
}

TEST_F(ExportCommand, EitherFileOfAPairNamesBoth) {
  LoadStream(ThreeSubtitles());
  In([](const OpenExport& dialog) {
    dialog.Choose("Combo_What", "VobSub pair");
    for (const char* name : {"other", "other.idx", "other.sub"}) {
      dialog.Type(name);
      EXPECT_EQ(dialog.Files(), "Writes other.idx and other.sub") << name;
    }
    dialog.Cancel();
  });
  Start();
}

TEST_F(ExportCommand, CancelledExportLeavesNothing) {
  LoadStream(ThreeSubtitles());
  const QStringList before = FilesThere();
  Window.SetPatience(std::chrono::milliseconds(0));
  In([](const OpenExport& dialog) {
    dialog.Choose("Combo_What", "VobSub pair");
    dialog.Export();
  });
  Dialogs.ExpectCancelled(DialogKind::Other);
  Start();
  EXPECT_EQ(Told(), "The export was cancelled; nothing was written");
  EXPECT_EQ(FilesThere(), before);
}

TEST_F(ExportCommand, FailureOfASelectedSubtitleSaysHowItIsCounted) {
  LoadStream(Join({FourCodes(PacketBuilder().Time(1 * Second)), FourCodes(PacketBuilder().Time(-Second))}));
  ClickRow(2);
  In([](const OpenExport& dialog) {
    dialog.Choose("Combo_What", "VobSub pair");
    dialog.Control<QRadioButton>("Option_Selected").click();
    dialog.Export();
  });
  Dialogs.ExpectMessageWith(
      {"Cannot export " + Path("movie.idx") + ": of the chosen subtitles, subtitle 1 starts before 0"});
  Start();
}

TEST_F(ExportCommand, WhatAPairCannotHoldIsTold) {
  LoadStream(Join({FourCodes(PacketBuilder().Time(5 * Second)), FourCodes(PacketBuilder().Time(Second)),
                   Bytes(3, 0xEE)}));
  QString remark;
  In([](const OpenExport& dialog) {
    dialog.Choose("Combo_What", "VobSub pair");
    dialog.Export();
  });
  Dialogs.Expect(DialogKind::Message, [&remark](QDialog& dialog) {
    remark = static_cast<QMessageBox&>(dialog).informativeText();
    dialog.accept();
  });
  Start();
  EXPECT_EQ(Dialogs.Last().Text, "movie.idx was written, with remarks:");
  EXPECT_TRUE(remark.contains("3 bytes after the last subtitle were left out")) << remark.toStdString();
  EXPECT_TRUE(remark.contains("they were sorted")) << remark.toStdString();
}
#endif

TEST_F(ExportCommand, AuthoringProjectIsWritten) {
  LoadStream(ThreeSubtitles());
  In([](const OpenExport& dialog) {
    dialog.Choose("Combo_What", "Authoring project");
    EXPECT_EQ(dialog.Files(), "Writes movie.xml, movie_pictures, movie.pal and movie_dvdauthor.xml");
    dialog.Export();
  });
  Start();
  EXPECT_EQ(ReadText(Path("movie.xml")).count("<spu "), 3);
  EXPECT_EQ(QDir(Path("movie_pictures")).entryList(QDir::Files).size(), 3);
  EXPECT_EQ(Told(), "Exported movie.xml, 3 subtitles");
}

TEST_F(ExportCommand, RemarksOfAProjectAreTold) {
  LoadStream(InvalidSecond());
  QString remark;
  In([](const OpenExport& dialog) {
    dialog.Choose("Combo_What", "Authoring project");
    dialog.Export();
  });
  Dialogs.Expect(DialogKind::Message, [&remark](QDialog& dialog) {
    remark = static_cast<QMessageBox&>(dialog).informativeText();
    dialog.accept();
  });
  Start();
  EXPECT_EQ(Dialogs.Last().Text, "movie.xml was written, with remarks:");
  EXPECT_TRUE(remark.startsWith("Subtitle 2 ")) << remark.toStdString();
}

TEST_F(ExportCommand, ContactSheetIsWritten) {
  LoadStream(ThreeSubtitles());
  In([](const OpenExport& dialog) {
    dialog.Choose("Combo_What", "Contact sheet");
    EXPECT_EQ(dialog.Files(), "Writes movie_001.png");
    EXPECT_FALSE(dialog.Control<QComboBox>("Combo_Language").isEnabled());
    dialog.Export();
  });
  Start();
  EXPECT_FALSE(QImage(Path("movie_001.png")).isNull());
}

TEST_F(ExportCommand, NamesOfManyFilesAreCutShort) {
  LoadStream(ManySubtitles(24 * 6));
  In([](const OpenExport& dialog) {
    dialog.Choose("Combo_What", "Contact sheet");
    EXPECT_EQ(dialog.Files(), "Writes movie_001.png, movie_002.png, movie_003.png, movie_004.png and 2 more");
    dialog.Cancel();
  });
  Start();
}

TEST_F(ExportCommand, NamesOfTheFilesFollowTheChoiceOfSubtitles) {
  LoadStream(ManySubtitles(25));
  ClickRow(1);
  In([](const OpenExport& dialog) {
    dialog.Choose("Combo_What", "Contact sheet");
    dialog.Control<QRadioButton>("Option_Selected").click();
    EXPECT_EQ(dialog.Files(), "Writes movie_001.png");
    dialog.Control<QRadioButton>("Option_All").click();
    EXPECT_EQ(dialog.Files(), "Writes movie_001.png and movie_002.png");
    dialog.Cancel();
  });
  Start();
}

TEST_F(ExportCommand, LongNameDoesNotWidenTheDialog) {
  LoadStream(ThreeSubtitles());
  In([](const OpenExport& dialog) {
    const QString name(200, 'n');
    dialog.Type(name);
    EXPECT_EQ(dialog.Files(), "Writes " + QString(20, 'n') + QChar(0x2026) + QString(36, 'n') + ".sup");
    dialog.Cancel();
  });
  Start();
}

TEST_F(ExportCommand, ProposedNameIsOfAFileThatIsNotThere) {
  Write("movie_001.png", Bytes(1, 'x'));
  LoadStream(ThreeSubtitles());
  In([](const OpenExport& dialog) {
    dialog.Choose("Combo_What", "Contact sheet");
    EXPECT_EQ(dialog.Files(), "Writes movie_new_001.png");
    dialog.Cancel();
  });
  Start();
}

TEST_F(ExportCommand, ChosenNameStaysWithTheEndingOfTheKind) {
  LoadStream(ThreeSubtitles());
  In([](const OpenExport& dialog) {
    dialog.Type("other.sup");
    dialog.Choose("Combo_What", "Contact sheet");
    EXPECT_EQ(dialog.File(), "other.png");
    dialog.Type("other");
    EXPECT_EQ(dialog.Files(), "Writes other_001.png");
    dialog.Type(" ");
    EXPECT_EQ(dialog.Files(), "");
    EXPECT_FALSE(dialog.Control<QPushButton>("Command_Export").isEnabled());
    dialog.Cancel();
  });
  Start();
}

TEST_F(ExportCommand, EndingIsThatOfTheKindAlone) {
  LoadStream(ThreeSubtitles());
  In([](const OpenExport& dialog) {
    dialog.Type("other.sub");
    EXPECT_EQ(dialog.Files(), "Writes other.sub.sup");
    dialog.Cancel();
  });
  Start();
}

TEST_F(ExportCommand, LanguagesStandInTheOrderOfTheirNames) {
  LoadStream(ThreeSubtitles());
  In([](const OpenExport& dialog) {
    const auto& list = dialog.Control<QComboBox>("Combo_Language");
    EXPECT_EQ(list.itemText(0), "unknown");
    QStringList names;
    for (int row = 1; row < list.count(); ++row) {
      names.append(list.itemText(row).section(" (", 0, 0));
    }
    EXPECT_GT(names.size(), 100);
    EXPECT_TRUE(std::ranges::is_sorted(names));
    dialog.Cancel();
  });
  Start();
}

TEST_F(ExportCommand, BrowseChoosesTheFile) {
  LoadStream(ThreeSubtitles());
  In([this](const OpenExport& dialog) {
    Dialogs.ExpectSave(Path("chosen.sup"));
    dialog.Control<QPushButton>("Command_Browse").click();
    EXPECT_EQ(dialog.File(), Path("chosen.sup"));
    dialog.Cancel();
  });
  Start();
}

TEST_F(ExportCommand, FailureNamesTheFileAndTheReason) {
  LoadStream(ThreeSubtitles());
  const QString path = Path("missing/out.sup");
  In([&](const OpenExport& dialog) {
    dialog.Type(path);
    dialog.Export();
  });
  Dialogs.ExpectMessageWith({"Cannot export " + path + ": "});
  Start();
}

/// What is in the folder of the files that are exported, by name.
using FilesOf = std::map<QString, QByteArray>;

class FaultsOfExport : public ExportCommand {
 protected:
  void SetUp() override {
    LoadStream(PrimaryStream({{1000, 100}}));
    Dialogs.AllowMessages();
  }

  [[nodiscard]] FilesOf Written() const {
    FilesOf files;
    QDirIterator file(Path("out"), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (file.hasNext()) {
      const QString path = file.next();
      files[path.mid(Path("out").size() + 1)] = ReadText(path);
    }
    return files;
  }
  void ExportAnew(const QString& what, const QString& name) {
    QDir(Path("out")).removeRecursively();
    QDir().mkdir(Path("out"));
    In([&](const OpenExport& dialog) {
      dialog.Choose("Combo_What", what);
      dialog.Control<QLineEdit>("Text_Path").setText(Path("out/" + name));
      dialog.Export();
    });
    Action("Export").trigger();
    QCoreApplication::processEvents();
  }

  /// Each of the files is whole or not there when a call has failed, no other is left behind, and where not
  /// all are there the message names one.
  void RequireWholeOrNone(const QString& what, const QString& name) {
    std::vector<Fault> faults;
    {
      const FaultySystem system;
      ExportAnew(what, name);
      faults = system.Faults();
    }
    const FilesOf complete = Written();
    ASSERT_FALSE(complete.empty());
    ASSERT_FALSE(faults.empty());
    for (const Fault& fault : faults) {
      const auto told = Dialogs.MessageTexts().size();
      {
        const FaultySystem system(fault);
        ExportAnew(what, name);
        ASSERT_TRUE(system.HasFailed());
      }
      const std::string where = std::string(CallNames[static_cast<std::size_t>(fault.Kind)]) + " " +
                                std::to_string(fault.Number) + " after " + std::to_string(fault.Taken);
      const FilesOf files = Written();
      for (const auto& [file, bytes] : files) {
        const auto whole = complete.find(file);
        // What cannot be removed stays.
        EXPECT_TRUE((whole != complete.end() && whole->second == bytes) || fault.Kind == Call::Remove)
            << file.toStdString() << " after " << where;
      }
      if (files != complete) {
        ASSERT_EQ(Dialogs.MessageTexts().size(), told + 1) << where;
        EXPECT_TRUE(Dialogs.MessageTexts().back().contains(Path("out/new"))) << where;
      }
    }
  }
};

TEST_F(FaultsOfExport, OfAStream) {
  RequireWholeOrNone("SUP stream", "new.sup");
}

#ifdef QUILLMARK_HAS_VOBSUB
TEST_F(FaultsOfExport, OfAPair) {
  RequireWholeOrNone("VobSub pair", "new.idx");
}
#endif

TEST_F(FaultsOfExport, OfAnAuthoringProject) {
  RequireWholeOrNone("Authoring project", "new.xml");
}

TEST_F(FaultsOfExport, OfAContactSheet) {
  RequireWholeOrNone("Contact sheet", "new.png");
}

TEST_F(ExportCommand, IsForAnOpenStreamThatIsNotMerged) {
  EXPECT_FALSE(Action("Export").isEnabled());
  LoadStream(PrimaryStream({{0, 100}}));
  EXPECT_TRUE(Action("Export").isEnabled());
  Merge(SecondaryStream({0}));
  EXPECT_FALSE(Action("Export").isEnabled());
}

TEST_F(ExportCommand, EditsStayUnsaved) {
  LoadStream(ThreeSubtitles());
  Choose("ImageCombo2", "4");
  Click("Command_SetAll");
  In([](const OpenExport& dialog) { dialog.Export(); });
  Start();
  EXPECT_FALSE(Window.Content().History().isClean());
}

TEST_F(ExportCommand, ListThatWasFilteredStillExportsAll) {
  LoadStream(ThreeSubtitles());
  Type("2");
  In([](const OpenExport& dialog) { dialog.Export(); });
  Start();
  EXPECT_EQ(Read(Path("movie_new.sup")), ThreeSubtitles());
}

}  // namespace
}  // namespace quillmark::test
