#include "tests/support/DialogScript.h"

#include <QMainWindow>
#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include "app/Dialogs.h"

namespace quillmark::test {
namespace {

/// The window tests trust the script to notice what was not expected; so must it.
class Script : public testing::Test {
 protected:
  QMainWindow Owner;
};

TEST_F(Script, UnexpectedDialogFailsTheTestAndIsClosed) {
  DialogScript dialogs;
  EXPECT_NONFATAL_FAILURE(ShowMessage(&Owner, "surprise"), "unexpected message");
}

TEST_F(Script, WrongTextFailsTheTest) {
  DialogScript dialogs;
  dialogs.ExpectMessage("one");
  EXPECT_NONFATAL_FAILURE(ShowMessage(&Owner, "another"), "unexpected message");
  EXPECT_NONFATAL_FAILURE(dialogs.Verify(), "no message dialog came: one");
}

TEST_F(Script, DialogThatNeverCameFailsTheTest) {
  DialogScript dialogs;
  dialogs.ExpectInput("7");
  EXPECT_NONFATAL_FAILURE(dialogs.Verify(), "no input dialog came");
}

TEST_F(Script, AnswerThatClosesNothingFailsTheTest) {
  DialogScript dialogs;
  dialogs.Expect(DialogKind::Message, [](QDialog&) {});
  EXPECT_NONFATAL_FAILURE(ShowMessage(&Owner, "stays"), "did not close");
}

}  // namespace
}  // namespace quillmark::test
